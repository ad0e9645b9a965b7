#include "common/TimeUtil.h"

#include <climits>
#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <string>

namespace {

// A zone of five hours and a half, east of Greenwich, for the time of a test.
class TimeUtilTest : public testing::Test {
  protected:
    TimeUtilTest() {
        if (const char* zone = std::getenv("TZ")) {
            m_zone = zone;
            m_hadZone = true;
        }
        setenv("TZ", "TST-5:30", 1);
        tzset();
    }
    ~TimeUtilTest() override {
        m_hadZone ? setenv("TZ", m_zone.c_str(), 1) : unsetenv("TZ");
        tzset();
    }

    static std::tm Record(int year, int month, int day, int hour, int minute, int second) {
        std::tm record{};
        record.tm_year = year - 1900;
        record.tm_mon = month - 1;
        record.tm_mday = day;
        record.tm_hour = hour;
        record.tm_min = minute;
        record.tm_sec = second;
        return record;
    }

  private:
    std::string m_zone;
    bool m_hadZone = false;
};

TEST_F(TimeUtilTest, MovesBetweenLocalTimeAndUtc) {
    const struct {
        bool outputUtc, inputIsUtc;
        const wchar_t* text;
    } cases[] = {
        {true, true, L"08.02.2024 02:54:55"},
        {false, true, L"08.02.2024 08:24:55"},
        {true, false, L"07.02.2024 21:24:55"},
        {false, false, L"08.02.2024 02:54:55"},
    };
    for (const auto& c : cases) {
        std::tm record = Record(2024, 2, 8, 2, 54, 55);
        EXPECT_EQ(c.text, GetDateTimeString(record, c.outputUtc, c.inputIsUtc));
    }
}

TEST_F(TimeUtilTest, NormalisesAndKeepsTheSecondBefore1970) {
    std::tm overflowing = Record(2023, 14, 30, 24, 0, 0);  // 30 February 2024, 24:00
    EXPECT_EQ(L"02.03.2024 00:00:00", GetDateTimeString(overflowing, true, true));
    std::tm minusOne = Record(1969, 12, 31, 23, 59, 59);
    EXPECT_EQ(L"31.12.1969 23:59:59", GetDateTimeString(minusOne, true, true));
}

TEST_F(TimeUtilTest, GivesNothingForAYearOutOfRange) {
    for (const bool inputIsUtc : {true, false}) {
        std::tm record = Record(2024, 2, 8, 0, 0, 0);
        record.tm_year = INT_MAX;
        record.tm_mon = INT_MAX;
        EXPECT_EQ(L"", GetDateTimeString(record, true, inputIsUtc));
    }
}

}  // namespace
