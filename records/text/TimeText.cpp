#include "records/text/TimeText.h"

#include "asn1/Elements.h"
#include "common/TimeUtil.h"
#include "records/text/OutlineText.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <string_view>

namespace {

namespace Calendar = std::chrono;

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

// A moment as it is written: a date, and a clock that a fraction of an hour may overrun.
struct Fields {
    Calendar::year_month_day date;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

bool TakeDate(CDigits& digits, bool isShortYear, Fields& fields) {
    const auto year = digits.Take(isShortYear ? 2 : 4);
    const auto month = digits.Take(2);
    const auto day = digits.Take(2);
    if (!year || !month || !day) {
        return false;
    }
    // RFC 5280, 4.1.2.5.1.
    const int century = !isShortYear ? 0 : *year >= 50 ? 1900 : 2000;
    fields.date = {Calendar::year(century + *year), Calendar::month(static_cast<unsigned>(*month)),
                   Calendar::day(static_cast<unsigned>(*day))};
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
// is one of the last unit given (X.680, 46, 47).
bool TakeClock(CDigits& digits, Fields& fields) {
    const auto hour = digits.Take(2);
    if (!hour) {
        return false;
    }
    const auto minute = digits.Take(2);
    const auto second = digits.Take(2);
    fields.hour = *hour;
    fields.minute = minute.value_or(0);
    fields.second = second.value_or(0);
    if (digits.Skip('.') || digits.Skip(',')) {
        const auto rest = TakeFraction(digits, second ? 1 : minute ? 60 : 3600);
        if (!rest) {
            return false;
        }
        fields.minute += *rest / 60;
        fields.second += *rest % 60;
    }
    return true;
}

// Seconds that local time is ahead of UTC; none for a malformed zone.
std::optional<int> TakeZone(CDigits& digits) {
    if (digits.Skip('Z') || digits.AtEnd()) {
        return 0;
    }
    // BER allows an offset (X.680, 46 and 47); DER and RFC 5280, 4.1.2.5, have "Z" alone.
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

std::int64_t DayOf(std::int64_t seconds) {
    return Calendar::floor<Calendar::days>(Calendar::seconds(seconds)).count();
}

// A leap second may be written (X.680, 46.2).
bool IsPossible(const Fields& fields) {
    return fields.date.ok() && fields.hour <= 23 && fields.minute <= 59 && fields.second <= 60;
}

// By hand: printf would take the locale's lock.
void AppendNumber(std::wstring& out, std::int64_t value, int digits) {
    std::int64_t scale = 1;
    while (--digits > 0) {
        scale *= 10;
    }
    for (; scale > 0; scale /= 10) {
        out += static_cast<wchar_t>(L'0' + value / scale % 10);
    }
}

std::wstring Format(std::int64_t seconds) {
    const Calendar::sys_seconds moment{Calendar::seconds(seconds)};
    const auto midnight = Calendar::floor<Calendar::days>(moment);
    const Calendar::year_month_day date(midnight);
    const Calendar::hh_mm_ss clock(moment - midnight);
    std::wstring out;
    out.reserve(19);
    AppendNumber(out, static_cast<unsigned>(date.day()), 2);
    AppendNumber(out += L'.', static_cast<unsigned>(date.month()), 2);
    AppendNumber(out += L'.', static_cast<int>(date.year()), 4);
    AppendNumber(out += L' ', clock.hours().count(), 2);
    AppendNumber(out += L':', clock.minutes().count(), 2);
    AppendNumber(out += L':', clock.seconds().count(), 2);
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
    Fields fields;
    if (!TakeDate(digits, isShortYear, fields) || !TakeClock(digits, fields) ||
        !IsPossible(fields)) {
        return std::nullopt;
    }
    const auto zone = TakeZone(digits);
    if (!zone || !digits.AtEnd()) {
        return std::nullopt;
    }
    const Calendar::seconds midnight = Calendar::sys_days(fields.date).time_since_epoch();
    return midnight.count() + fields.hour * 3600 + fields.minute * 60 + fields.second - *zone;
}

std::optional<std::int64_t> ReadTime(const CAsn1Object& time) {
    return ReadTime(ElementOf(time));
}

std::int64_t CLocalOffsets::At(std::int64_t seconds) {
    m_days.resize(kDays);
    const std::int64_t day = DayOf(seconds);
    Day& known = m_days[static_cast<std::size_t>(day) % kDays];
    if (known.day != day) {
        const std::int64_t begin = day * kSecondsOfDay;
        const std::int64_t offset = LocalOffset(begin);
        // Most days have one offset, and a list of a million entries has few days: the time zone's
        // lock is taken for a day, not for an entry.
        known = {day, offset, offset == LocalOffset(begin + kSecondsOfDay)};
    }
    return known.isConstant ? known.offset : LocalOffset(seconds);
}

TimeForms DescribeTime(std::int64_t seconds, CLocalOffsets* offsets) {
    TimeForms forms;
    // Past four digits of a year there is no text, and no promise of what the C library does.
    if (seconds < kFirst || seconds > kNoEnd) {
        return forms;
    }
    forms.seconds = seconds;
    forms.utc = Format(seconds);
    // 99991231235959Z means that there is no end (RFC 5280, 4.1.2.5): no zone may move it to
    // another year.
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

TimeForms DescribeTime(const CAsn1Object& time) {
    return DescribeTime(ElementOf(time));
}

std::wstring TimeLine(const CAsn1Element& element) {
    const TimeForms time = DescribeTime(element);
    return time.seconds ? TimeLine(time) : UnreadableText(element.raw);
}

std::wstring TimeLine(const CAsn1Object& time) {
    return TimeLine(ElementOf(time));
}

std::wstring TimeLine(const TimeForms& time) {
    return time.local + L" (" + time.utc + L" UTC)";
}

}  // namespace ca
