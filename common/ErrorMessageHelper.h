#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ca {

/// Turns error codes into texts of the current language.
///
/// With the prefix, texts begin with "DONE", "NEED" or "ERROR "; verdicts (16109, 16123, 16199,
/// 16200, 16201 to 16223) carry "DONE" because callers print them as results. An unknown code gives
/// an empty text.
class ErrorMessageHelper {
  public:
    std::wstring GetErrorMessage(std::uint32_t code, bool prefix) const;
    std::wstring GetErrorMessageNoCustom(std::uint32_t code, bool prefix) const;
    /// `custom` is taken for hosts that bring texts of their own; the look-up does not consult it.
    static std::wstring GetErrorMessageCustom(std::uint32_t code,
                                              const std::vector<std::wstring>& custom, bool prefix);

    /// Replaces the custom texts. Only while no other thread asks for a text.
    void SetCustomTexts(const std::vector<std::wstring>& texts) { m_custom = texts; }
    const std::vector<std::wstring>& CustomTexts() const { return m_custom; }

  private:
    std::vector<std::wstring> m_custom;
};

/// The process-wide helper that LogInit() fills.
ErrorMessageHelper& GlobalErrorMessageHelper();

}  // namespace ca

/// The look-up of operations and log: 16400 to 16402 come from the module's own table, always with
/// "ERROR " in front; every other code from the global helper.
std::wstring GetErrorMessage(std::uint32_t code, bool prefix);
