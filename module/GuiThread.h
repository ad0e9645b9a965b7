#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

class QWidget;

namespace ca {

/// True when a Qt application with widgets runs in this process, in whatever thread.
bool HasWidgetApplication();

/// True when widgets may be made here: such an application runs, and this is its thread.
bool CanShowWidgets();

/// Work for the GUI thread. Answers a code of ErrorCodes.h, 0 for success.
using GuiTask = std::function<std::uint32_t()>;

/// How long a call from another thread waits for the GUI thread.
inline constexpr std::chrono::milliseconds kGuiWait(5000);

/// Windows of ShowOwnWindow() open at a time.
inline constexpr std::size_t kMaxOwnWindows = 32;

/// Runs `task` in the GUI thread and returns its code: at once in that thread, through its event
/// loop from any other. Returns 16131, and the task does not run later either, when there is no
/// application with widgets, it ends, or its thread did not get to the task within `wait`; also
/// when the task did not come to its end within the same time again. 16197 when it threw.
///
/// The task is destroyed after the call's end, in whatever thread: it holds what it uses by value.
/// Safe from any thread, and while the application is created or destroyed in its own.
std::uint32_t RunInGuiThread(GuiTask task, std::chrono::milliseconds wait = kGuiWait);

/// False when kMaxOwnWindows are open: there is no need to make another one. GUI thread only.
bool HasRoomForOwnWindow();

/// Shows a window that nobody owns: it is deleted when it is closed, or when the application ends.
/// Closing it does not end the application, whose only visible window it may be. GUI thread only,
/// inside a GuiTask. False, and the window is gone, when kMaxOwnWindows are open: a client that
/// asks without end does not fill the user's screen.
bool ShowOwnWindow(std::unique_ptr<QWidget> window);

/// Sees the end of the running application coming from here on, so that no call races with it;
/// keeps the library in memory. RunInGuiThread() does this too, but the earlier the better.
void WatchApplication();

/// Keeps this library in memory until the process ends: Qt holds addresses of its code once it has
/// made a window, and a host may unload it at any time.
void KeepLibraryLoaded() noexcept;

}  // namespace ca
