#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct CAsn1Element;
class CAsn1Object;

namespace ca {

/// A moment, as records carry it.
struct TimeTexts {
    std::wstring local;  ///< "dd.mm.yyyy hh:mm:ss" in the process's time zone; "" when unreadable
    std::wstring utc;    ///< the same in UTC
};

/// A moment as it is described.
struct TimeForms : TimeTexts {
    /// Seconds since 1970-01-01 UTC; none when the element is not a possible time.
    std::optional<std::int64_t> seconds;
};

inline constexpr std::int64_t kSecondsOfDay = 86400;

/// Local time for many moments: asks the system once a day that is met, instead of each time. Lives
/// as long as one description; a change of the process's time zone shows in the next.
class CLocalOffsets {
  public:
    /// Seconds that local time is ahead of UTC.
    std::int64_t At(std::int64_t seconds);

  private:
    struct Day {
        std::int64_t day = INT64_MIN;
        std::int64_t offset = 0;
        bool isConstant = false;
    };
    static constexpr std::size_t kDays = 2048;  // lists look some years back
    std::vector<Day> m_days;
};

/// Reads a UTCTime or GeneralizedTime element. Years of two digits follow RFC 5280, 4.1.2.5.1 (50
/// to 99 are 19YY); fractions are dropped, offsets applied, a time without a zone is taken as UTC.
std::optional<std::int64_t> ReadTime(const CAsn1Element& element);
std::optional<std::int64_t> ReadTime(const CAsn1Object& time);

/// ReadTime() with its texts. 99991231235959Z, which says that there is no end (RFC 5280, 4.1.2.5),
/// reads the same in both.
TimeForms DescribeTime(const CAsn1Element& element, CLocalOffsets* offsets = nullptr);
TimeForms DescribeTime(const CAsn1Object& time);
TimeForms DescribeTime(std::int64_t seconds, CLocalOffsets* offsets = nullptr);

/// "local (utc UTC)", for a line of a text; the unreadable value's text for an impossible time.
std::wstring TimeLine(const CAsn1Element& element);
std::wstring TimeLine(const CAsn1Object& time);
std::wstring TimeLine(const TimeForms& time);

}  // namespace ca
