#pragma once

#include "common/HeapPtr.h"
#include "common/Json.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace ca {

/// Octets of the JSON text at the start of `data`: up to its first NUL, or all of `length`.
std::size_t JsonTextLength(const char* data, std::size_t length) noexcept;

/// A JSON object whose keys are asked for one by one, most of them in vain.
class CJsonObject {
  public:
    explicit CJsonObject(const JsonValue& object);

    /// The value of a key, the first one of that name; null when the key is absent. Names the key
    /// for the report of a wrong type, so `key` is static text.
    const JsonValue* Find(std::string_view key) const;

  private:
    static std::uint64_t LengthBit(std::size_t length) noexcept {
        return std::uint64_t{1} << (length % 64);
    }

    const JsonValue& m_object;
    std::uint64_t m_lengths = 0;  ///< bits of the lengths of its keys: tells most absent keys
};

/// A JSON text copied once and parsed in place; owns copy and values.
class CJsonText {
  public:
    /// Throws ca::Exception 16300 for a text that is not a JSON object, std::bad_alloc.
    CJsonText(const char* text, std::size_t length);
    CJsonText(const CJsonText&) = delete;
    CJsonText& operator=(const CJsonText&) = delete;
    ~CJsonText();

    /// The copy is overwritten at the end: there are secrets in it.
    void HoldsSecrets() noexcept { m_hasSecrets = true; }
    /// Lives as long as this object.
    CJsonObject Root() const { return CJsonObject(m_document); }

  private:
    // What a small request needs, without a block of the heap.
    static constexpr std::size_t kOwnText = 512;
    static constexpr std::size_t kOwnPool = 2048;

    char* CopyPadded(const char* text, std::size_t length);

    alignas(16) unsigned char m_ownText[kOwnText];
    alignas(16) unsigned char m_ownPool[kOwnPool];
    BytePtr m_text;
    std::size_t m_size = 0;  // of the copy
    bool m_hasSecrets = false;
    CJsonAllocator m_heap;
    JsonPool m_pool;
    JsonDocument m_document;
};

/// The text of a string value, which may hold NULs. Any other value: JsonTypeFault().
std::wstring WideText(const JsonValue& value);

}  // namespace ca
