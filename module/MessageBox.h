#pragma once

#include "module/GuiThread.h"

#include <string>

namespace ca {

/// Shows a warning. In the GUI thread it returns when the box is closed; from any other thread when
/// the box is up, since a user may take hours.
/// \param wait  how long another thread waits for the GUI thread, see RunInGuiThread().
/// \return false, nothing having been shown, where there is no application that could show it.
bool MessageBoxWarning(const std::wstring& text, const std::wstring& caption,
                       std::chrono::milliseconds wait = kGuiWait);

}  // namespace ca
