#pragma once

#include <mutex>

namespace ca {

/// A mutex that fork() leaves free in the child. A child has one thread, and a copy of every lock
/// as the others held it: a plain mutex may stay locked for ever. All of these are taken before the
/// process is copied, and given back on both sides; what they guard is whole in the child.
///
/// For std::lock_guard and the like. So that a fork does not wait for ever, neither the host is
/// called while one is held, nor another one created or destroyed; and it is held for a short time.
class CForkMutex {
  public:
    /// Puts right what the child has no use for, while all are held; in the thread that forked.
    using ChildStep = void (*)() noexcept;

    /// Throws std::bad_alloc.
    explicit CForkMutex(ChildStep inChild = nullptr);
    CForkMutex(const CForkMutex&) = delete;
    CForkMutex& operator=(const CForkMutex&) = delete;
    ~CForkMutex();

    // NOLINTBEGIN(readability-identifier-naming): as the standard library names them
    void lock() { m_mutex.lock(); }
    bool try_lock() noexcept { return m_mutex.try_lock(); }
    void unlock() noexcept { m_mutex.unlock(); }
    // NOLINTEND(readability-identifier-naming)

    /// For condition variables.
    std::mutex& Native() noexcept { return m_mutex; }

  private:
    friend class CForkMutexes;

    std::mutex m_mutex;
    const ChildStep m_inChild;
    CForkMutex* m_previous = nullptr;
    CForkMutex* m_next = nullptr;
};

}  // namespace ca
