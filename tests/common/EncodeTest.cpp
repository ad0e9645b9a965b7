#include "common/DecimalText.h"
#include "common/Encode.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cstdint>
#include <limits>
#include <regex>

namespace {

TEST(EncodeTest, TrimsMembersOfTheSet) {
    const struct {
        std::string text, chars, both, right;
    } cases[] = {
        {"  a b \t", " \t", "a b", "  a b"}, {"   ", " ", "", ""},  {"", " ", "", ""},
        {" a ", "", " a ", " a "},           {"xyx", "xy", "", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        std::string text = c.text;
        ca::trim(text, c.chars);
        EXPECT_EQ(c.both, text);
        std::wstring wide = ca::u8u16(c.text);
        ca::trim(wide, ca::u8u16(c.chars));
        EXPECT_EQ(ca::u8u16(c.both), wide);
        text = c.text;
        RTrim(text, c.chars);
        EXPECT_EQ(c.right, text);
    }
}

TEST(EncodeTest, SplitsWithoutEmptyItems) {
    std::vector<std::wstring> items = {L"old"};
    ca::Split(L";a;;b;", L";", items);
    EXPECT_THAT(items, testing::ElementsAre(L"a", L"b"));
    ca::Split(L"", L";", items);
    EXPECT_THAT(items, testing::IsEmpty());
    std::vector<std::string> narrow;
    ca::SplitA("one, two", ", ", narrow);
    EXPECT_THAT(narrow, testing::ElementsAre("one", "two"));
    ca::SplitA("whole", "", narrow);
    EXPECT_THAT(narrow, testing::ElementsAre("whole"));
}

TEST(EncodeTest, WritesDecimalDigits) {
    EXPECT_EQ(L"-9223372036854775808", ca::DecimalText(std::numeric_limits<std::int64_t>::min()));
    EXPECT_EQ(L"18446744073709551615", ca::DecimalText(std::numeric_limits<std::uint64_t>::max()));
    EXPECT_EQ(L"255 1",
              ca::DecimalText(static_cast<unsigned char>(255)) + L' ' + ca::DecimalText(true));
}

TEST(EncodeTest, FoldsCaseAndTakesTheTail) {
    std::wstring text = L"MiXed 1";
    ca::toupper(text);
    EXPECT_EQ(L"MIXED 1", text);
    ca::tolower(text);
    EXPECT_EQ(L"mixed 1", text);
    EXPECT_TRUE(ca::iequals(L"MIXED 1", text));
    EXPECT_FALSE(ca::iequals(L"mixed", text));
    EXPECT_EQ(L"ed 1", ca::tail(text, 4));
    EXPECT_EQ(text, ca::tail(text, 8));
    EXPECT_EQ(0x2D, ca::ReverseByte(0xB4));
}

TEST(EncodeTest, GeneratesRandomUuids) {
    const std::string uuid = ca::UuidGenerate();
    const std::regex form(
        "\\{[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}\\}");
    EXPECT_TRUE(std::regex_match(uuid, form)) << uuid;
    EXPECT_NE(uuid, ca::UuidGenerate());
}

TEST(EncodeTest, KeepsTheSourceLengthInTheLocaleConversions) {
    const std::string before = std::setlocale(LC_CTYPE, nullptr);
    ASSERT_NE(nullptr, std::setlocale(LC_CTYPE, "C.UTF-8"));
    EXPECT_EQ("abc", wstr_to_str(L"abc"));
    EXPECT_EQ(std::wstring(L"яю\0\0", 4), str_to_wstr("яю"));
    // Four letters of two octets do not fit in four octets.
    EXPECT_EQ("яю", wstr_to_str(L"яюяю"));
    std::setlocale(LC_CTYPE, before.c_str());
}

}  // namespace
