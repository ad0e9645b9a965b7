#include "records/text/TimeText.h"

#include "records/text/Elements.h"
#include "records/text/OutlineText.h"

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

// hh[mm[ss[.f...]]]; minutes may be missing in a GeneralizedTime, seconds in both (X.680 46, 47).
bool TakeClock(CDigits& digits, std::tm& date) {
    const auto hour = digits.Take(2);
    if (!hour) {
        return false;
    }
    date.tm_hour = *hour;
    date.tm_min = digits.Take(2).value_or(0);
    date.tm_sec = digits.Take(2).value_or(0);
    if (digits.Skip('.') || digits.Skip(',')) {
        while (digits.Take(1)) {
        }
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

std::wstring Format(const std::tm& date) {
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
    return timegm(&date) - *zone;
}

TimeForms DescribeTime(std::int64_t seconds) {
    TimeForms forms;
    const std::time_t time = seconds;
    std::tm date{};
    if (seconds < kFirst || seconds > kNoEnd || gmtime_r(&time, &date) == nullptr) {
        return forms;
    }
    forms.seconds = seconds;
    forms.utc = Format(date);
    if (seconds == kNoEnd || localtime_r(&time, &date) == nullptr) {
        forms.local = forms.utc;
    } else {
        forms.local = Format(date);
    }
    return forms;
}

TimeForms DescribeTime(const CAsn1Element& element) {
    const auto seconds = ReadTime(element);
    return seconds ? DescribeTime(*seconds) : TimeForms();
}

std::wstring TimeLine(const CAsn1Element& element) {
    const TimeForms time = DescribeTime(element);
    return time.seconds ? TimeLine(time) : UnreadableText(element.raw);
}

std::wstring TimeLine(const TimeForms& time) {
    return time.local + L" (" + time.utc + L" UTC)";
}

}  // namespace ca
