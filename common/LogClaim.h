#pragma once

#include "common/Log.h"

#include <chrono>

namespace ca {

/// A module's claim to the process's log, which has one callback: that of the newest claim. When
/// the claim ends, its callback is not called any more, and the newest one left takes its place:
/// the code behind a callback may be unloaded while other modules, and windows, go on logging.
/// Claims may be made and ended in any thread.
class CLogClaim {
  public:
    CLogClaim() = default;
    CLogClaim(const CLogClaim&) = delete;
    CLogClaim& operator=(const CLogClaim&) = delete;
    ~CLogClaim() { Release(); }

    /// Makes `callback` the process's, in place of what this claim held; null keeps the log silent.
    void Hold(LogCallback callback) noexcept;

    /// Ends the claim. Afterwards no thread is inside the callback and none enters it, unless
    /// another claim holds the same one. Two calls are not waited for: one that this very thread
    /// is inside, and one that has not returned after kPatience (it may wait for this thread).
    void Release() noexcept;

    static constexpr std::chrono::milliseconds kPatience{5000};

  private:
    // Whether no other claim holds the same callback.
    bool Unlink() noexcept;

    LogCallback m_callback = nullptr;
    CLogClaim* m_older = nullptr;
    bool m_isHeld = false;
};

/// What LogInit() and LogEvent() do with the process's callback.
void SetLogCallback(LogCallback callback) noexcept;
bool CallLog(const wchar_t* line, bool isError);

}  // namespace ca
