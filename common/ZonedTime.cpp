#include "common/ZonedTime.h"

#include "common/TimeUtil.h"

#include <array>
#include <chrono>
#include <ctime>
#include <optional>

namespace {

using Seconds = std::chrono::seconds;

// Day, month, year, hour, minute, second of "01.02.2024 10:00:00".
std::optional<std::array<int, 6>> ReadFields(std::string_view text) {
    constexpr std::string_view kForm = "00.00.0000 00:00:00";
    if (text.size() != kForm.size()) {
        return std::nullopt;
    }
    std::array<int, 6> fields{};
    std::size_t field = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (kForm[i] != '0') {
            if (text[i] != kForm[i]) {
                return std::nullopt;
            }
            ++field;
        } else if (text[i] < '0' || text[i] > '9') {
            return std::nullopt;
        } else {
            fields[field] = fields[field] * 10 + (text[i] - '0');
        }
    }
    return fields;
}

Seconds SinceEpoch(const std::array<int, 6>& fields) {
    const std::chrono::year_month_day date(std::chrono::year(fields[2]),
                                           std::chrono::month(static_cast<unsigned>(fields[1])),
                                           std::chrono::day(static_cast<unsigned>(fields[0])));
    return std::chrono::sys_days(date).time_since_epoch() + std::chrono::hours(fields[3]) +
           std::chrono::minutes(fields[4]) + Seconds(fields[5]);
}

std::string TwoDigits(Seconds::rep number) {
    return {static_cast<char>('0' + number / 10 % 10), static_cast<char>('0' + number % 10)};
}

std::string WithOffset(std::string_view local, Seconds::rep offset) {
    std::string text = std::string(local) + " UTC";
    if (offset == 0) {
        return text;
    }
    const Seconds::rep ahead = offset < 0 ? -offset : offset;
    text += (offset < 0 ? '-' : '+') + TwoDigits(ahead / 3600) + ':' + TwoDigits(ahead / 60 % 60);
    return ahead % 60 != 0 ? text + ':' + TwoDigits(ahead % 60) : text;  // before there were zones
}

}  // namespace

namespace ca {

std::string WithZone(std::string_view local, std::string_view utc) {
    constexpr Seconds kMost = std::chrono::hours(26);  // farther apart they are not one moment
    const auto here = ReadFields(local);
    const auto there = ReadFields(utc);
    const Seconds offset = here && there ? SinceEpoch(*here) - SinceEpoch(*there) : Seconds::max();
    const bool isZone = offset <= kMost && offset >= -kMost;
    return isZone ? WithOffset(local, offset.count()) : std::string(local);
}

std::string WithZone(std::string_view local) {
    const auto fields = ReadFields(local);
    if (!fields) {
        return std::string(local);
    }
    std::tm time{};
    time.tm_mday = (*fields)[0];
    time.tm_mon = (*fields)[1] - 1;
    time.tm_year = (*fields)[2] - 1900;
    time.tm_hour = (*fields)[3];
    time.tm_min = (*fields)[4];
    time.tm_sec = (*fields)[5];
    time.tm_isdst = -1;
    const CTimeZoneLock lock;
    static_cast<void>(std::mktime(&time));  // its answer may be -1 of a good time
    return WithOffset(local, time.tm_gmtoff);
}

}  // namespace ca
