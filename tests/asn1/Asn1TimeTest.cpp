#include "asn1/Asn1Time.h"
#include "tests/asn1/Asn1Testing.h"

#include <cstdlib>
#include <ctime>
#include <memory>
#include <optional>
#include <stdexcept>

namespace {

class TimeTest : public Asn1Test {
  protected:
    TimeTest() {
        if (const char* zone = std::getenv("TZ"); zone != nullptr) {
            m_zone = zone;
        }
        SetZone("UTC0");
    }
    ~TimeTest() override {
        if (m_zone) {
            SetZone(m_zone->c_str());
        } else {
            unsetenv("TZ");
            tzset();
        }
    }

    static void SetZone(const char* zone) {
        setenv("TZ", zone, 1);
        tzset();
    }

    // Decodes a time of the tag; the block lives as long as the fixture.
    CAsn1Time& Read(unsigned char tag, const std::string& text) {
        m_content = text;
        m_block.tag = tag;
        m_block.content = reinterpret_cast<unsigned char*>(m_content.data());
        m_block.contentLength = static_cast<std::uint32_t>(m_content.size());
        m_time.emplace(&m_block);
        m_time->Decode();
        return *m_time;
    }

    std::wstring Show(unsigned char tag, const std::string& text) {
        return Read(tag, text).GetFormattedString(0);
    }

  private:
    std::optional<std::string> m_zone;
    std::string m_content;
    CAsn1Block m_block;
    std::optional<CAsn1Time> m_time;
};

TEST_F(TimeTest, ReadsFieldsAndOffsets) {
    const struct {
        unsigned char tag;
        const char* text;
        const wchar_t* shown;
        int zone;
    } cases[] = {
        {0x17, "991231235959Z", L"31.12.2099 23:59:59", 0},
        {0x17, "500101000000Z", L"01.01.2050 00:00:00", 0},
        {0x17, "240229120000+0330", L"29.02.2024 08:30:00", 210},
        {0x17, "231231233000-0100", L"01.01.2024 00:30:00", -60},
        {0x17, "240101000000", L"01.01.2024 00:00:00", 0},
        {0x17, "249999999999Z", L"11.06.2032 04:40:39", 0},
        {0x18, "19991231235959Z", L"31.12.1999 23:59:59", 0},
        {0x18, "20240229120000.5Z", L"29.02.2024 12:00:00", 0},
        {0x18, "20240229120000+0100", L"29.02.2024 11:00:00", 60},
        {0x18, "00010101000000Z", L"01.01.1 00:00:00", 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const CAsn1Time& time = Read(c.tag, c.text);
        EXPECT_EQ(time.GetFormattedString(0), c.shown);
        EXPECT_EQ(time.GetZoneMinutes(), c.zone);
    }
}

TEST_F(TimeTest, ThrowsForFieldsThatAreNoNumbers) {
    const std::pair<unsigned char, const char*> cases[] = {{0x17, ""},
                                                           {0x17, "24"},
                                                           {0x17, "9912312359Z"},
                                                           {0x17, "24xx01000000Z"},
                                                           {0x18, "2024010100Z"},
                                                           {0x17, "240101000000+01"},
                                                           {0x17, "240101000000-"},
                                                           {0x18, "20240101000000+0"}};
    for (const auto& [tag, text] : cases) {
        EXPECT_THROW(Read(tag, text), std::logic_error) << text;
    }
}

TEST_F(TimeTest, NormalisesOnlyGeneralizedTimeInTheLocalZone) {
    SetZone("CET-1CEST,M3.5.0,M10.5.0/3");
    EXPECT_EQ(Show(0x17, "240701120000Z"), L"01.07.2024 12:00:00");
    EXPECT_EQ(Show(0x18, "20240115120000Z"), L"15.01.2024 12:00:00");
    // In summer too, but for the hour that the local zone leaves out.
    EXPECT_EQ(Show(0x18, "20240701120000Z"), L"01.07.2024 12:00:00");
    EXPECT_EQ(Show(0x17, "240331023000Z"), L"31.03.2024 02:30:00");
    EXPECT_EQ(Show(0x18, "20240331023000Z"), L"31.03.2024 03:30:00");
}

TEST_F(TimeTest, WritesTimesWithTheirOffset) {
    std::tm fields{};
    fields.tm_year = 124;
    fields.tm_mon = 1;
    fields.tm_mday = 29;
    fields.tm_hour = 7;
    fields.tm_min = 5;
    fields.tm_sec = 3;
    const auto written = [&fields](CAsn1Time& time) {
        time.SetTime(fields);
        time.Encode();
        const Bytes raw = time.GetRawData(/*rebuild=*/false);
        return std::string(raw.begin() + 2, raw.end());
    };
    CAsn1UTCTime utc;
    CAsn1GeneralizedTime general;
    EXPECT_EQ(written(utc), "240229070503");
    EXPECT_EQ(written(general), "20240229070503");
    utc.SetTimeZoneOffset(3, 30);
    general.SetTimeZoneOffset(-11, 0);
    EXPECT_EQ(written(utc), "240229070503+0330");
    EXPECT_EQ(written(general), "20240229070503-1100");
}

}  // namespace
