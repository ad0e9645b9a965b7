#pragma once

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

}  // namespace ca
