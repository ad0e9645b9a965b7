#pragma once

#include <cxxabi.h>
#include <pthread.h>

namespace ca {

/// Lets a cancellation of this thread (pthread_cancel) wait while it lives. A cancelled thread
/// unwinds like an exception that may not be caught; so it must not begin inside a destructor, nor
/// inside a library that holds locks or half-made state of its own. The cancellation comes into
/// effect at the thread's next cancellation point.
class CCancelShield {
  public:
    CCancelShield() noexcept { ::pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &m_before); }
    CCancelShield(const CCancelShield&) = delete;
    CCancelShield& operator=(const CCancelShield&) = delete;
    ~CCancelShield() {
        int unused = 0;
        ::pthread_setcancelstate(m_before, &unused);
    }

  private:
    int m_before = PTHREAD_CANCEL_ENABLE;
};

/// For every `catch (...)` that does not throw on: returns when what was caught is a C++ exception,
/// and throws on what is not that. A thread that is cancelled or calls pthread_exit() unwinds that
/// way, and the process is aborted when that stops. No such handler may run inside another one: the
/// run-time library cannot stack what is not a C++ exception.
inline void LetThreadEnd() {
    if (abi::__cxa_current_exception_type() == nullptr) {
        throw;
    }
}

}  // namespace ca
