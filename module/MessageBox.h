#pragma once

#include <string>

namespace ca {

/// True when widgets may be made here: a Qt application with widgets runs, and this is its thread.
bool CanShowWidgets();

/// Shows a warning and waits until it is closed.
/// \return false, nothing having been shown, where CanShowWidgets() is false.
bool MessageBoxWarning(const std::wstring& text, const std::wstring& caption);

}  // namespace ca
