#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <stop_token>
#include <string>
#include <string_view>
#include <thread>

namespace host {

/// Names the module and what it was asked when it takes the process down: by a crash, abort() or
/// exit(), or by not answering in time. The process then ends with kExitModuleFailed.
///
/// The module stays in this process. What it does to it is met by signal handlers that only use
/// async-signal-safe calls, on stacks of their own, so that an overflow is told as well, and by a
/// thread where there is a time to keep. A module that sets handlers of its own has the say, and
/// _exit() and SIGKILL pass unseen. Answers that were written stay; what other threads had not
/// finished is lost.
class CModuleWatch {
  public:
    /// One a process, made before the module is loaded.
    /// \param module   its path, made visible
    /// \param timeout  for each CModuleTask; 0 sets none
    CModuleWatch(const std::string& module, std::chrono::milliseconds timeout);
    CModuleWatch(const CModuleWatch&) = delete;
    CModuleWatch& operator=(const CModuleWatch&) = delete;
    ~CModuleWatch() = default;

  private:
    void Watch(const std::stop_token& stop, std::chrono::nanoseconds timeout);

    std::mutex m_mutex;
    std::condition_variable_any m_stopped;
    std::jthread m_thread;  // last: it uses the others
};

/// While it lives, the module works on something in this thread. One at a time a thread.
class CModuleTask {
  public:
    enum class Limit : std::uint8_t { kTimeout, kNone };

    /// \param name  what the user knows it by, made visible; outlives the task.
    explicit CModuleTask(std::string_view name, Limit limit = Limit::kTimeout);
    CModuleTask(const CModuleTask&) = delete;
    CModuleTask& operator=(const CModuleTask&) = delete;
    ~CModuleTask();

  private:
    std::int64_t m_start;
};

}  // namespace host
