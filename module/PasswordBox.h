#pragma once

#include <optional>
#include <string>

namespace ca {

/// Asks the user for a password in a window; the GUI thread's when it is called in another one.
/// None when the user cancels, when no window can be opened, and after two minutes.
/// \return UTF-8; the caller cleanses it.
std::optional<std::string> AskPassword(const std::wstring& caption, const std::wstring& prompt);

}  // namespace ca
