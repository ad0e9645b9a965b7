#include "common/TimeUtil.h"

#include <cerrno>
#include <cwchar>

namespace {

ca::CForkMutex timeZoneMutex;

}  // namespace

ca::CTimeZoneLock::CTimeZoneLock() : m_lock(timeZoneMutex) {}

std::wstring GetDateTimeString(std::tm& record, bool outputUtc, bool inputIsUtc) {
    const ca::CTimeZoneLock lock;
    errno = 0;
    const std::time_t time = inputIsUtc ? timegm(&record) : std::mktime(&record);
    if (time == -1 && errno != 0) {  // -1 alone is the second before 1970
        return {};
    }
    std::tm fields{};
    tzset();  // localtime_r() need not look at the time zone again
    if ((outputUtc ? gmtime_r(&time, &fields) : localtime_r(&time, &fields)) == nullptr) {
        return {};
    }
    wchar_t text[128];
    return {text, std::wcsftime(text, std::size(text), L"%d.%m.%Y %T", &fields)};
}
