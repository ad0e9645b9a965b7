#pragma once

#include "common/ForkMutex.h"

#include <mutex>

namespace ca {

/// Held by whoever has the C library format wide texts or convert them by the locale (vswprintf,
/// vfwprintf, wcstombs, mbstowcs). It has one lock over character sets, which stays locked in a
/// child if a thread is inside as the parent forks.
class CWideTextLock {
  public:
    CWideTextLock();

  private:
    std::lock_guard<CForkMutex> m_lock;
};

}  // namespace ca
