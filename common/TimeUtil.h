#pragma once

#include "common/ForkMutex.h"

#include <ctime>
#include <mutex>
#include <string>

namespace ca {

/// Held by whoever asks the C library for local or UTC dates (localtime_r, mktime, timegm, tzset).
/// It has one lock over the time zone, which stays locked in a child if a thread is inside as the
/// parent forks.
class CTimeZoneLock {
  public:
    CTimeZoneLock();

  private:
    std::lock_guard<CForkMutex> m_lock;
};

}  // namespace ca

/// A point in time as text: "08.02.2024 02:54:55", day.month.year hours:minutes:seconds.
/// \param record      the fields; a local record may be normalised in place, as mktime() does it,
///                    and says in tm_isdst whether summer time is meant (-1: as the zone has it).
/// \param outputUtc   true: the text shows UTC; false: the process's local time.
/// \param inputIsUtc  true: the record is UTC; false: local time.
/// Digits are ASCII in every locale. Empty when the point in time has no representable year.
/// Safe from any thread.
std::wstring GetDateTimeString(std::tm& record, bool outputUtc, bool inputIsUtc);
