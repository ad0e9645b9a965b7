#pragma once

#include "common/HeapPtr.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace host {

/// What a module answered, taken apart. The provider may be anybody's: nothing about its buffer is
/// believed that the buffer does not show.
class CAnswer {
  public:
    /// Stands for an answer that there is none of.
    explicit CAnswer(std::string fault) : m_fault(std::move(fault)) {}
    /// Takes ownership of a malloc buffer of `size` octets, which may be null.
    CAnswer(char* response, std::size_t size);

    /// The JSON text: what stands before the first NUL.
    std::string_view GetText() const { return m_text; }
    /// The octets after that NUL.
    std::span<const unsigned char> GetRaw() const { return m_raw; }

    /// Why this is not a proper answer (UTF-8, one sentence); "" when it is one.
    const std::string& GetFault() const { return m_fault; }
    /// "errorCode" of the answer; nothing when it has none.
    std::optional<std::uint32_t> GetErrorCode() const { return m_errorCode; }
    /// Proper and with the error code 0.
    bool IsGood() const { return m_fault.empty() && m_errorCode == 0U; }

    /// The result's octets: those after the text, or else the "fileData" of the answer, decoded.
    /// Nothing when it has neither.
    std::optional<std::string> ExtractOctets() const;

  private:
    void Inspect();

    ca::BytePtr m_buffer;
    std::string_view m_text;
    std::span<const unsigned char> m_raw;
    std::string m_fault;
    std::optional<std::uint32_t> m_errorCode;
};

}  // namespace host
