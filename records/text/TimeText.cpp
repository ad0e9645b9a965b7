#include "records/text/TimeText.h"

#include "common/TimeUtil.h"
#include "records/text/Elements.h"
#include "records/text/OutlineText.h"

#include <algorithm>
#include <ctime>
#include <string_view>

namespace {

// The moments that four digits of a year can say.
constexpr std::int64_t kFirst = -62167219200;  // 0000-01-01 00:00:00 UTC
constexpr std::int64_t kNoEnd = 253402300799;  // 9999-12-31 23:59:59 UTC

// Reads decimal fields from the front of a text.
class CDigits {
  public:
    explicit CDigits(std::string_view text) : m_text(text) {}

    // The next `count` digits; none, and nothing taken, when they are not there.
    std::optional<int> Take(std::size_t count) {
        if (m_text.size() < count) {
            return std::nullopt;
        }
        int value = 0;
        for (const char c : m_text.substr(0, count)) {
            if (c < '0' || c > '9') {
                return std::nullopt;
            }
            value = value * 10 + (c - '0');
        }
        m_text.remove_prefix(count);
        return value;
    }
    bool Skip(char c) {
        if (m_text.empty() || m_text.front() != c) {
            return false;
        }
        m_text.remove_prefix(1);
        return true;
    }
    bool AtEnd() const { return m_text.empty(); }
    bool AtDigit() const { return !AtEnd() && m_text.front() >= '0' && m_text.front() <= '9'; }

  private:
    std::string_view m_text;
};

bool TakeDate(CDigits& digits, bool isShortYear, std::tm& date) {
    const auto year = digits.Take(isShortYear ? 2 : 4);
    const auto month = digits.Take(2);
    const auto day = digits.Take(2);
    if (!year || !month || !day) {
        return false;
    }
    const int century = !isShortYear ? 0 : *year >= 50 ? 1900 : 2000;
    date.tm_year = century + *year - 1900;
    date.tm_mon = *month - 1;
    date.tm_mday = *day;
    return true;
}

// The fraction of a unit of `seconds`, in whole seconds; none when no digit stands there.
std::optional<int> TakeFraction(CDigits& digits, int seconds) {
    if (!digits.AtDigit()) {
        return std::nullopt;
    }
    // Digits past the sixth are less than a second of an hour.
    std::int64_t value = 0;
    std::int64_t scale = 1;
    while (const auto digit = digits.Take(1)) {
        if (scale < 1000000) {
            value = value * 10 + *digit;
            scale *= 10;
        }
    }
    return static_cast<int>(value * seconds / scale);
}

// hh[mm[ss]][.f...]; minutes may be missing in a GeneralizedTime, seconds in both, and a fraction
// is one of the last unit given (X.680 46, 47).
bool TakeClock(CDigits& digits, std::tm& date) {
    const auto hour = digits.Take(2);
    if (!hour) {
        return false;
    }
    const auto minute = digits.Take(2);
    const auto second = digits.Take(2);
    date.tm_hour = *hour;
    date.tm_min = minute.value_or(0);
    date.tm_sec = second.value_or(0);
    if (digits.Skip('.') || digits.Skip(',')) {
        const auto rest = TakeFraction(digits, second ? 1 : minute ? 60 : 3600);
        if (!rest) {
            return false;
        }
        date.tm_min += *rest / 60;
        date.tm_sec += *rest % 60;
    }
    return true;
}

// Seconds that local time is ahead of UTC; none for a malformed zone.
std::optional<int> TakeZone(CDigits& digits) {
    if (digits.Skip('Z') || digits.AtEnd()) {
        return 0;
    }
    const bool isAhead = digits.Skip('+');
    if (!isAhead && !digits.Skip('-')) {
        return std::nullopt;
    }
    const auto hours = digits.Take(2);
    const int minutes = digits.Take(2).value_or(0);
    if (!hours || *hours > 23 || minutes > 59) {
        return std::nullopt;
    }
    const int seconds = *hours * 3600 + minutes * 60;
    return isAhead ? seconds : -seconds;
}

// Days from 1970-01-01 to a date of the Gregorian calendar. Years are counted from March, so that a
// leap day ends one; 400 years are 146097 days.
std::int64_t DaysOf(std::int64_t year, int month, int day) {
    year -= month <= 2 ? 1 : 0;
    const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
    const std::int64_t yearOfEra = year - era * 400;
    const int monthFromMarch = month > 2 ? month - 3 : month + 9;
    const int dayOfYear = (153 * monthFromMarch + 2) / 5 + day - 1;
    return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

// The other way round: year, month and day.
void SetDate(std::int64_t days, std::tm& date) {
    days += 719468;
    const std::int64_t era = (days >= 0 ? days : days - 146096) / 146097;
    const std::int64_t dayOfEra = days - era * 146097;
    const std::int64_t yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    date.tm_mday = static_cast<int>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
    date.tm_mon = static_cast<int>(monthFromMarch < 10 ? monthFromMarch + 2 : monthFromMarch - 10);
    const std::int64_t year = yearOfEra + era * 400 + (date.tm_mon < 2 ? 1 : 0);
    date.tm_year = static_cast<int>(year - 1900);
}

std::int64_t DayOf(std::int64_t seconds) {
    return (seconds >= 0 ? seconds : seconds - (ca::kSecondsOfDay - 1)) / ca::kSecondsOfDay;
}

bool IsPossible(const std::tm& date) {
    if (date.tm_mon < 0 || date.tm_mon > 11 || date.tm_hour > 23 || date.tm_min > 59 ||
        date.tm_sec > 60) {
        return false;
    }
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const int year = date.tm_year + 1900;
    const bool isLeap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    const int days = kDays[date.tm_mon] + (isLeap && date.tm_mon == 1 ? 1 : 0);
    return date.tm_mday >= 1 && date.tm_mday <= days;
}

void AppendNumber(std::wstring& out, int value, int digits) {
    int scale = 1;
    while (--digits > 0) {
        scale *= 10;
    }
    for (; scale > 0; scale /= 10) {
        out += static_cast<wchar_t>(L'0' + value / scale % 10);
    }
}

std::wstring Format(std::int64_t seconds) {
    const std::int64_t day = DayOf(seconds);
    const int clock = static_cast<int>(seconds - day * ca::kSecondsOfDay);
    std::tm date{};
    SetDate(day, date);
    date.tm_hour = clock / 3600;
    date.tm_min = clock / 60 % 60;
    date.tm_sec = clock % 60;
    std::wstring out;
    out.reserve(19);
    AppendNumber(out, date.tm_mday, 2);
    AppendNumber(out += L'.', date.tm_mon + 1, 2);
    AppendNumber(out += L'.', date.tm_year + 1900, 4);
    AppendNumber(out += L' ', date.tm_hour, 2);
    AppendNumber(out += L':', date.tm_min, 2);
    AppendNumber(out += L':', date.tm_sec, 2);
    return out;
}

// Seconds that the process's time zone is ahead of UTC at a moment.
std::int64_t LocalOffset(std::int64_t seconds) {
    const std::time_t time = seconds;
    std::tm date{};
    const ca::CTimeZoneLock lock;
    return localtime_r(&time, &date) != nullptr ? date.tm_gmtoff : 0;
}

}  // namespace

namespace ca {

std::optional<std::int64_t> ReadTime(const CAsn1Element& element) {
    const bool isShortYear = element.tag == kAsn1UtcTime;
    if (!isShortYear && element.tag != kAsn1GeneralizedTime) {
        return std::nullopt;
    }
    CDigits digits({reinterpret_cast<const char*>(element.content.data()), element.content.size()});
    std::tm date{};
    if (!TakeDate(digits, isShortYear, date) || !TakeClock(digits, date) || !IsPossible(date)) {
        return std::nullopt;
    }
    const auto zone = TakeZone(digits);
    if (!zone || !digits.AtEnd()) {
        return std::nullopt;
    }
    return DaysOf(date.tm_year + 1900, date.tm_mon + 1, date.tm_mday) * kSecondsOfDay +
           date.tm_hour * 3600 + date.tm_min * 60 + date.tm_sec - *zone;
}

std::int64_t CLocalOffsets::At(std::int64_t seconds) {
    m_days.resize(kDays);
    const std::int64_t day = DayOf(seconds);
    Day& known = m_days[static_cast<std::size_t>(day) % kDays];
    if (known.day != day) {
        const std::int64_t begin = day * kSecondsOfDay;
        const std::int64_t offset = LocalOffset(begin);
        known = {day, offset, offset == LocalOffset(begin + kSecondsOfDay)};
    }
    return known.isConstant ? known.offset : LocalOffset(seconds);
}

TimeForms DescribeTime(std::int64_t seconds, CLocalOffsets* offsets) {
    TimeForms forms;
    if (seconds < kFirst || seconds > kNoEnd) {
        return forms;
    }
    forms.seconds = seconds;
    forms.utc = Format(seconds);
    const std::int64_t offset = seconds == kNoEnd    ? 0
                                : offsets != nullptr ? offsets->At(seconds)
                                                     : LocalOffset(seconds);
    const std::int64_t local = std::clamp(seconds + offset, kFirst, kNoEnd);
    forms.local = offset != 0 ? Format(local) : forms.utc;
    return forms;
}

TimeForms DescribeTime(const CAsn1Element& element, CLocalOffsets* offsets) {
    const auto seconds = ReadTime(element);
    return seconds ? DescribeTime(*seconds, offsets) : TimeForms();
}

std::wstring TimeLine(const CAsn1Element& element) {
    const TimeForms time = DescribeTime(element);
    return time.seconds ? TimeLine(time) : UnreadableText(element.raw);
}

std::wstring TimeLine(const TimeForms& time) {
    return time.local + L" (" + time.utc + L" UTC)";
}

}  // namespace ca
