#include "host/RecordText.h"
#include "tests/common/TemporaryDir.h"

#include <gmock/gmock.h>

#include <ctime>
#include <string>

namespace {

using testing::HasSubstr;
using testing::Not;

std::string English(const std::string& record, std::size_t width = 100) {
    return host::RecordText("{\"record\":{" + record + "}}", {.width = width});
}

TEST(RecordTextTest, SaysTheZoneOfTimes) {
    const struct {
        const char* local;
        const char* utc;
        const char* text;
    } cases[] = {
        {"01.02.2024 10:00:00", "01.02.2024 10:00:00", "01.02.2024 10:00:00 UTC"},
        {"01.02.2024 10:00:00", "01.02.2024 06:30:00", "01.02.2024 10:00:00 UTC+03:30"},
        {"31.12.2023 22:00:00", "01.01.2024 03:00:00", "31.12.2023 22:00:00 UTC-05:00"},
        {"01.01.1900 02:30:17", "01.01.1900 00:00:00", "01.01.1900 02:30:17 UTC+02:30:17"},
        {"31.12.9999 23:59:59", "31.12.9999 23:59:59", "31.12.9999 23:59:59 UTC"},
        {"01.02.2024 10:00:00", "01.02.2025 10:00:00", "01.02.2024 10:00:00"},
        {"soon", "01.02.2024 10:00:00", "soon"},
    };
    for (const auto& c : cases) {
        const std::string times =
            std::string("\"ValidTo\":\"") + c.local + "\",\"ValidToUTC\":\"" + c.utc + "\"";
        EXPECT_EQ(std::string("  Valid to: ") + c.text, English(times));
    }
    const struct ZoneReset {
        ~ZoneReset() { tzset(); }
    } reset;                                      // once the variable is as it was
    const ScopedVariable zone("TZ", "TST+2:30");  // behind UTC
    tzset();
    EXPECT_EQ("  Revoked certificates:\n    0a  01.02.2024 10:00:00 UTC-02:30",
              English("\"Revoked\":[{\"Serial\":\"0a\",\"InvalidityDate\":"
                      "\"01.02.2024 10:00:00\",\"Extensions\":[]}]"));
}

TEST(RecordTextTest, SaysTheFingerprintOfWhatHasAnEncoding) {
    EXPECT_EQ(
        "  SHA-1:   00\n  SHA-256: "
        "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad",
        English("\"Id\":\"00\",\"RawData\":\"YWJj\""));
    EXPECT_EQ("  SHA-1: 00", English("\"Id\":\"00\",\"RawData\":\"\""));
}

TEST(RecordTextTest, CallsAHolderWithoutCertificateTheHolder) {
    const std::string name = "\"HolderIssuer\":\"CN=A\"";
    EXPECT_EQ("  Holder's serial: 01\n  Holder's issuer: CN=A",
              English("\"HolderSerial\":\"01\"," + name));
    EXPECT_EQ("  Holder: CN=A", English("\"HolderSerial\":\"\"," + name));
}

// However long a value is, no line of it begins where a line of its own would.
TEST(RecordTextTest, FoldsLinesDeeperThanOtherLinesBegin) {
    const std::string value = "DNS: aaaaaaaaaa aaaaaaaaaa aaaaaaaaaa   CA: yes";
    for (const std::string& text : {value, value + "\\nCA: no"}) {
        const std::string shown =
            English(R"("Extensions":[{"OidFriendlyName":"N","OidValue":"1.2","FormattedData":")" +
                        text + R"(","Critical":false}])",
                    44);
        EXPECT_THAT(shown, HasSubstr("\n          CA: yes")) << shown;
        EXPECT_THAT(shown, Not(HasSubstr("\n      CA: yes"))) << shown;
    }
}

}  // namespace
