#include "asn1/Asn1Damage.h"
#include "asn1/Elements.h"
#include "common/Encode.h"
#include "common/Lng.h"
#include "records/text/ExtensionText.h"
#include "records/text/NameText.h"
#include "records/text/OutlineText.h"
#include "records/text/SerialText.h"
#include "records/text/TextLines.h"
#include "records/text/TimeText.h"
#include "tests/asn1/DerWriter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <random>
#include <string>

namespace {

constexpr unsigned char kUtf8 = 0x0C;
constexpr unsigned char kTeletex = 0x14;
constexpr unsigned char kUniversal = 0x1C;
constexpr unsigned char kUnicode = 0x1E;

const Octets kCommonName = {0x55, 0x04, 0x03};
const Octets kInn = {0x2A, 0x85, 0x03, 0x03, 0x81, 0x03, 0x01, 0x01};
const Octets kUnnamedType = {0x2A, 0x03, 0x04};

// English texts, and a time zone three hours and a half ahead of UTC.
class TextTest : public testing::Test {
  protected:
    TextTest() {
        SetZORNALng(L"en");
        setenv("TZ", "TST-3:30", 1);
        tzset();
    }
    ~TextTest() override {
        SetZORNALng(L"ru");
        unsetenv("TZ");
        tzset();
    }
};

CAsn1Element First(Octets& octets) {
    return ca::FirstElement(std::span(octets));
}

Octets Attribute(const Octets& type, const Octets& value) {
    return Tlv(0x30, {Tlv(0x06, type), value});
}

ca::NameForms FormsOf(Octets name) {
    return ca::DescribeName(First(name));
}

// The forms of CN=value.
ca::NameForms FormsOfValue(const Octets& value) {
    return FormsOf(Tlv(0x30, Tlv(0x31, Attribute(kCommonName, value))));
}

TEST_F(TextTest, NamesEscapeWhatTheirFormsReserve) {
    const struct {
        std::string_view value;
        const wchar_t* readable;
        const wchar_t* x500;
        const wchar_t* tags;
    } cases[] = {
        {"a, b", L"\"a, b\"", L"a\\, b", L"a, b"},
        {"a+b", L"\"a+b\"", L"a\\+b", L"a+b"},
        {"say \"a\"", L"\"say \"\"a\"\"\"", L"say \\\"a\\\"", L"say \"a\""},
        {"a;b=c\\d", L"a;b=c\\d", L"a\\;b=c\\\\d", L"a\\;b\\=c\\\\d"},
        {"a<b>c", L"a<b>c", L"a\\<b\\>c", L"a<b>c"},
        {"#a#", L"#a#", L"\\#a#", L"#a#"},
        {"  ", L"\"  \"", L"\\ \\ ", L"  "},
        {" a b ", L"\" a b \"", L"\\ a b\\ ", L" a b "},
        {"a\nb", L"a\\u000ab", L"a\\0ab", L"a\\nb"},
        {std::string_view("a\0b", 3), L"a\\u0000b", L"a\\00b", L"a\\u0000b"},
        {"a\x7F\xC2\x85", L"a\\u007f\\u0085", L"a\\7f\\c2\\85", L"a\\u007f\\u0085"},
        {"a\u202Eb\u2066", L"a\\u202eb\\u2066", L"a\\e2\\80\\aeb\\e2\\81\\a6", L"a\\u202eb\\u2066"},
        {"a\u2028b\U000E0041", L"a\\u2028b\\U000e0041", L"a\\e2\\80\\a8b\\f3\\a0\\81\\81",
         L"a\\u2028b\\U000e0041"},
        {"a\\u202E", L"a\\u005cu202E", L"a\\\\u202E", L"a\\\\u202E"},
        {"A\\user\\U1", L"A\\user\\U1", L"A\\\\user\\\\U1", L"A\\\\user\\\\U1"},
        {"#0500", L"\\u00230500", L"\\#0500", L"\\u00230500"},
        {"\u0418\u0432\u0430\u043D", L"\u0418\u0432\u0430\u043D", L"\u0418\u0432\u0430\u043D",
         L"\u0418\u0432\u0430\u043D"},
        {"a\xFF", L"a\uFFFD", L"a\uFFFD", L"a\uFFFD"},
        {"", L"", L"", L""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.value);
        const ca::NameForms forms = FormsOfValue(Tlv(kUtf8, Text(c.value)));
        EXPECT_EQ(std::wstring(L"CN=") + c.readable, forms.readable);
        EXPECT_EQ(std::wstring(L"2.5.4.3=") + c.readable, forms.oid);
        EXPECT_EQ(std::wstring(L"CN=") + c.x500, forms.x500);
        EXPECT_EQ(std::wstring(L"CN=") + c.tags + L";", forms.tags);
        EXPECT_EQ(L"", forms.error);
    }
}

// The character of the escape at the front of a text, which is left with what stands after it; 0
// when there is none.
wchar_t TakeEscape(std::wstring_view& text) {
    const std::size_t digits = text.starts_with(L"\\U") ? 8 : text.starts_with(L"\\u") ? 4 : 0;
    const std::wstring_view hex = text.substr(std::min<std::size_t>(2, text.size()), digits);
    if (digits == 0 || hex.size() < digits ||
        hex.find_first_not_of(L"0123456789abcdefABCDEF") != std::wstring_view::npos) {
        return 0;
    }
    const auto c = static_cast<wchar_t>(std::stoul(std::wstring(hex), nullptr, 16));
    text.remove_prefix(2 + digits);
    return c;
}

// What a reader of a text makes of it, and what a program does of a value in a tag list.
std::wstring ReadBack(std::wstring_view text, bool isTag) {
    std::wstring out;
    while (!text.empty()) {
        if (const wchar_t c = TakeEscape(text); c != 0) {
            out += c;
            continue;
        }
        const bool isPair = isTag && text[0] == L'\\';
        text.remove_prefix(isPair ? 1 : 0);
        out += isPair && text[0] == L'n' ? L'\n' : text[0];
        text.remove_prefix(1);
    }
    return out;
}

// Of whatever such characters a text consists, no other one looks like it.
TEST_F(TextTest, EscapesCannotBeImitated) {
    constexpr std::wstring_view kAlphabet = L"\\\\uUn02eE8cC5;=#,\n\u2028\u202E\U000E0041";
    std::mt19937 random(1);
    for (int i = 0; i < 5000; ++i) {
        std::wstring text;
        for (auto length = random() % 14; length != 0; --length) {
            text += kAlphabet[random() % kAlphabet.size()];
        }
        const ca::NameForms forms = FormsOfValue(Tlv(kUtf8, Text(ca::u16u8(text))));
        ASSERT_TRUE(forms.tags.starts_with(L"CN=") && forms.tags.ends_with(L";"));
        EXPECT_EQ(text, ReadBack(forms.tags.substr(3, forms.tags.size() - 4), /*isTag=*/true));
        const std::wstring shown = ca::Visible(text);
        EXPECT_EQ(text, ReadBack(shown, /*isTag=*/false));
        std::wstring again;
        ca::AppendShown(again, shown);
        EXPECT_EQ(shown, again) << "what is shown already stays";
    }
}

TEST_F(TextTest, HiddenCharactersAreThoseThatLeaveNoTrace) {
    for (const std::uint32_t hidden :
         {0x00U,   0x1FU,    0x7FU,    0x9FU,    0xADU,    0x34FU,  0x61CU,   0x115FU,
          0x1160U, 0x180EU,  0x200BU,  0x200FU,  0x2028U,  0x2029U, 0x202EU,  0x2060U,
          0x2064U, 0x2069U,  0x3164U,  0xFDD0U,  0xFE0FU,  0xFEFFU, 0xFFA0U,  0xFFFCU,
          0xFFFFU, 0xE0001U, 0xE007FU, 0xE01EFU, 0x5FFFEU, 0xDC00U, 0x110000U}) {
        EXPECT_TRUE(ca::IsHiddenCharacter(static_cast<wchar_t>(hidden))) << std::hex << hidden;
    }
    for (const std::uint32_t shown :
         {0x20U, 0x7EU, 0xA0U, 0xACU, 0xAEU, 0x350U, 0x410U, 0x61BU, 0x61DU, 0x2010U, 0x2027U,
          0x202FU, 0x3165U, 0xFFFDU, 0x1F600U, 0xE1000U}) {
        EXPECT_FALSE(ca::IsHiddenCharacter(static_cast<wchar_t>(shown))) << std::hex << shown;
    }
}

TEST_F(TextTest, SerialNumbersOfOtherOctetsReadOtherwise) {
    const struct {
        Octets content;
        const wchar_t* text;
        Octets number;
    } cases[] = {
        {{0x01}, L"01", {0x01}},
        {{0x00, 0x01}, L"0001", {0x01}},
        {{0x00, 0x00, 0x01}, L"000001", {0x01}},
        {{0xFF}, L"-01", {0xFF}},
        {{0xFF, 0xFF}, L"-0001", {0xFF}},
        {{0x00, 0xFF}, L"ff", {0x00, 0xFF}},
        {{0x80}, L"-80", {0x80}},
        {{0x00, 0x80}, L"80", {0x00, 0x80}},
        {{0xFF, 0x7F}, L"-0081", {0xFF, 0x7F}},
        {{0x00}, L"00", {0x00}},
        {{0x80, 0x00}, L"-8000", {0x80, 0x00}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.text, ca::SerialText(c.content));
        EXPECT_EQ(c.number, ca::ReadSerialText(c.text)) << "what is shown is found";
    }
    EXPECT_EQ((Octets{0x05, 0xDB}), ca::ReadSerialText(L"0:5 Db"));
    EXPECT_EQ(Octets{0x00}, ca::ReadSerialText(L""));
    for (const wchar_t* wrong : {L"12g4", L"1-2", L"--1"}) {
        EXPECT_FALSE(ca::ReadSerialText(wrong));
    }
}

TEST_F(TextTest, NamesKeepTheOrderOfTheirRdns) {
    const Octets value = Tlv(kUtf8, Text("x"));
    const ca::NameForms forms =
        FormsOf(Tlv(0x30, {Tlv(0x31, {Attribute(kCommonName, value), Attribute(kInn, value)}),
                           Tlv(0x31, Attribute(kUnnamedType, value)),
                           Tlv(0x31, Attribute(kCommonName, {0x05, 0x00}))}));
    EXPECT_EQ(L"CN=x + INN=x, 1.2.3.4=x, CN=#0500", forms.readable);
    EXPECT_EQ(L"2.5.4.3=x + 1.2.643.3.131.1.1=x, 1.2.3.4=x, 2.5.4.3=#0500", forms.oid);
    EXPECT_EQ(L"CN=#0500,1.2.3.4=#0c0178,CN=x+INN=x", forms.x500);
    EXPECT_EQ(L"CN=x;INN=x;1.2.3.4=x;CN=#0500;", forms.tags);
}

TEST_F(TextTest, NamesReadEveryStringType) {
    const struct {
        const char* name;
        unsigned char tag;
        Octets content;
        const wchar_t* text;
    } cases[] = {
        {"UTF-16", kUnicode, {0x04, 0x18, 0xD8, 0x3D, 0xDE, 0x00}, L"\u0418\U0001F600"},
        {"lone surrogates", kUnicode, {0xDE, 0x00, 0xD8, 0x3D, 0x00}, L"\uFFFD\uFFFD\uFFFD"},
        {"surrogate before another character", kUnicode, {0xD8, 0x3D, 0x00, 0x61}, L"\uFFFDa"},
        {"UTF-32",
         kUniversal,
         {0x00, 0x01, 0xF6, 0x00, 0x00, 0x00, 0x04, 0x18},
         L"\U0001F600\u0418"},
        {"UTF-32 past the last plane", kUniversal, {0x00, 0x11, 0x00, 0x00, 0x61}, L"\uFFFD\uFFFD"},
        {"Latin-1", kTeletex, {0x4D, 0xFC, 0x6C}, L"M\u00FCl"},
        {"UTF-8 as Teletex", kTeletex, {0xD0, 0x98}, L"\u0418"},
        {"Latin-1 as printable", 0x13, {0x4D, 0xFC, 0x6C}, L"M\u00FCl"},
        {"T.61", kTeletex, {'M', 0xC8, 'u', 'l', 0xFB}, L"M\u00FCl\u00DF"},
        {"T.61 capital", 0x16, {0xC8, 'U', 'b', 'e', 'r'}, L"\u00DCber"},
        {"Latin-1 capitals", kTeletex, {0xC9, 'C', 0xC8, 'U'}, L"\u00C9C\u00C8U"},
        {"Latin-1 initial", kTeletex, {0xC2, 'n', 'g', 'e', 'l'}, L"\u00C2ngel"},
        {"no accent of T.61", kTeletex, {'a', 0xC8, 'k'}, L"a\u00C8k"},
        {"malformed UTF-8", kUtf8, {0x4D, 0xFC, 0x6C}, L"M\uFFFDl"},
        {"numeric", 0x12, Text("770708"), L"770708"},
        {"IA5", 0x16, Text("a@b"), L"a@b"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(std::wstring(L"CN=") + c.text, FormsOfValue(Tlv(c.tag, c.content)).readable);
    }
}

TEST_F(TextTest, NamesThatAreEmptyOrDamagedSayWhatThereIs) {
    const ca::NameForms empty = FormsOf({0x30, 0x00});
    EXPECT_EQ(L"", empty.readable + empty.oid + empty.x500 + empty.tags + empty.error);
    const Octets good = Tlv(0x31, Attribute(kCommonName, Tlv(kUtf8, Text("x"))));
    const Octets inner[] = {{0x05, 0x00}, {0x31, 0x00}};
    for (const Octets& part : inner) {
        EXPECT_EQ(L"CN=x, CN=x", FormsOf(Tlv(0x30, {good, part, good})).readable);
    }
    const Octets damaged[] = {
        Tlv(0x30, {good, {0x05, 0x00}}),                           // no RDN
        Tlv(0x30, {good, {0x31, 0x00}}),                           // an RDN without attributes
        Tlv(0x30, {good, {0x31, 0x05, 0x30}}),                     // one that ends too early
        Tlv(0x30, {good, Tlv(0x31, Tlv(0x30, Tlv(0x06, kInn)))}),  // an attribute without value
    };
    for (const Octets& name : damaged) {
        const ca::NameForms forms = FormsOf(name);
        EXPECT_EQ(L"CN=x", forms.readable);
        EXPECT_NE(L"", forms.error);
    }
}

TEST_F(TextTest, NamesAreCutAtTheirBounds) {
    Octets rdns;
    const Octets rdn = Tlv(0x31, Attribute(kCommonName, Tlv(kUtf8, Text("x"))));
    for (std::size_t i = 0; i < ca::kMaxListed + 2; ++i) {
        rdns.insert(rdns.end(), rdn.begin(), rdn.end());
    }
    EXPECT_TRUE(FormsOf(Tlv(0x30, rdns)).readable.ends_with(L"CN=x, \u2026 and 2 more"));
    EXPECT_EQ(L"\u2026 and 2 more", FormsOf(Tlv(0x30, rdns)).error);
    const Octets longText(ca::kMaxValueText + 1, 'a');
    EXPECT_EQ(3 + ca::kMaxValueText + 1, FormsOfValue(Tlv(kUtf8, longText)).readable.size());
    EXPECT_EQ(L"a text is cut", FormsOfValue(Tlv(kUtf8, longText)).error);
}

TEST_F(TextTest, TimesAreReadAsProfilesSay) {
    constexpr unsigned char kUtc = 0x17;
    constexpr unsigned char kGeneral = 0x18;
    const struct {
        unsigned char tag;
        const char* text;
        const wchar_t* local;
        const wchar_t* utc;
    } cases[] = {
        {kUtc, "500101000000Z", L"01.01.1950 03:30:00", L"01.01.1950 00:00:00"},
        {kUtc, "491231235959Z", L"01.01.2050 03:29:59", L"31.12.2049 23:59:59"},
        {kUtc, "000229120000Z", L"29.02.2000 15:30:00", L"29.02.2000 12:00:00"},
        {kUtc, "2611210740Z", L"21.11.2026 11:10:00", L"21.11.2026 07:40:00"},
        {kUtc, "261121074000+0300", L"21.11.2026 08:10:00", L"21.11.2026 04:40:00"},
        {kGeneral, "19491231235959Z", L"01.01.1950 03:29:59", L"31.12.1949 23:59:59"},
        {kGeneral, "20500101000000Z", L"01.01.2050 03:30:00", L"01.01.2050 00:00:00"},
        {kGeneral, "20261121074059.999Z", L"21.11.2026 11:10:59", L"21.11.2026 07:40:59"},
        {kGeneral, "20261121074059,5-0530", L"21.11.2026 16:40:59", L"21.11.2026 13:10:59"},
        {kGeneral, "20261121074059+03", L"21.11.2026 08:10:59", L"21.11.2026 04:40:59"},
        {kGeneral, "202611210740", L"21.11.2026 11:10:00", L"21.11.2026 07:40:00"},
        {kGeneral, "2026112107.255Z", L"21.11.2026 10:45:18", L"21.11.2026 07:15:18"},
        {kGeneral, "202611210740.5Z", L"21.11.2026 11:10:30", L"21.11.2026 07:40:30"},
        {kGeneral, "20161231235960Z", L"01.01.2017 03:30:00", L"01.01.2017 00:00:00"},
        {kGeneral, "99991231235959Z", L"31.12.9999 23:59:59", L"31.12.9999 23:59:59"},
        {kGeneral, "99991231235958Z", L"31.12.9999 23:59:59", L"31.12.9999 23:59:58"},
        {kGeneral, "99991231235959-0100", L"", L""},
        {kGeneral, "00000101000000+0100", L"", L""},
        {kGeneral, "21000229000000Z", L"", L""},
        {kUtc, "261321074000Z", L"", L""},
        {kUtc, "260021074000Z", L"", L""},
        {kUtc, "260431000000Z", L"", L""},
        {kUtc, "261121244000Z", L"", L""},
        {kUtc, "261121076000Z", L"", L""},
        {kUtc, "261121074061Z", L"", L""},
        {kUtc, "26112107400Z", L"", L""},
        {kUtc, "261121074000Z0", L"", L""},
        {kUtc, "261121074000+2400", L"", L""},
        {kUtc, "261121074000+03:00", L"", L""},
        {kUtc, "-61121074000Z", L"", L""},
        {kGeneral, "20261121", L"", L""},
        {kGeneral, "20261121074000.Z", L"", L""},
        {kGeneral, "", L"", L""},
        {kUtf8, "261121074000Z", L"", L""},
    };
    ca::CLocalOffsets offsets;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        Octets octets = Tlv(c.tag, Text(c.text));
        for (ca::CLocalOffsets* const known :
             {static_cast<ca::CLocalOffsets*>(nullptr), &offsets}) {
            const ca::TimeForms forms = ca::DescribeTime(First(octets), known);
            EXPECT_EQ(c.local, forms.local);
            EXPECT_EQ(c.utc, forms.utc);
            EXPECT_EQ(*c.utc == L'\0', !forms.seconds);
        }
    }
}

// Central Europe: clocks go back on 25 October 2026 at 01:00 UTC.
TEST_F(TextTest, LocalTimesFollowTheChangeOfClocksInsideADay) {
    setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
    tzset();
    ca::CLocalOffsets offsets;
    const auto at = [&](const char* text) {
        Octets octets = Tlv(0x18, Text(text));
        return ca::DescribeTime(First(octets), &offsets).local;
    };
    EXPECT_EQ(L"25.10.2026 02:59:59", at("20261025005959Z"));
    EXPECT_EQ(L"25.10.2026 02:00:00", at("20261025010000Z"));
    EXPECT_EQ(L"25.10.2026 02:59:59", at("20261025005959Z"));
}

// What is said of an element, the faults after it.
std::wstring Outline(Octets& element) {
    ca::CTextLines lines;
    ca::SayOutline(First(element), lines);
    const std::wstring text = lines.Take();
    const std::wstring faults = lines.TakeFaults();
    return faults.empty() ? text : text + L" | " + faults;
}

TEST_F(TextTest, OutlinesAreBoundedInDepthAndSize) {
    Octets small = Tlv(0x30, {{0x02, 0x01, 0x7F},
                              {0x02, 0x01, 0x80},
                              {0x01, 0x01, 0xFF},
                              Tlv(0x06, kUnnamedType),
                              Tlv(0x06, kCommonName),
                              Tlv(kUtf8, Text("a\x01")),
                              Tlv(0x03, {0x04, 0xF0}),
                              Tlv(0xA1, {0x05, 0x00}),
                              {0x17, 0x01, 0x30},
                              {0x80, 0x01, 0xAB}});
    EXPECT_EQ(
        L"SEQUENCE\n  INTEGER: 127\n  INTEGER: -128\n  BOOLEAN: TRUE\n"
        L"  OBJECT IDENTIFIER: 1.2.3.4\n  OBJECT IDENTIFIER: Common name (2.5.4.3)\n"
        L"  UTF8 STRING: a\\u0001\n  BIT STRING: f0\n  [1]\n    NULL\n"
        L"  UTC TIME: Unreadable value: 170130\n  [0]: ab",
        Outline(small));
    Octets deep = {0x05, 0x00};
    for (int i = 0; i < 5000; ++i) {
        deep = Tlv(0x30, deep);
    }
    const std::wstring outline = Outline(deep);
    EXPECT_TRUE(outline.ends_with(L"SEQUENCE \u2026 | a text is cut"));
    EXPECT_GT(100, std::ranges::count(outline, L'\n'));
    EXPECT_TRUE(ca::IsWellFormed(deep));
    Octets wide = Tlv(0x30, Octets(200000, 0x05));
    for (std::size_t i = 6; i < wide.size(); i += 2) {
        wide[i] = 0x00;
    }
    const std::wstring cut = Outline(wide);
    EXPECT_EQ(static_cast<std::ptrdiff_t>(ca::kMaxListed), std::ranges::count(cut, L'\n'));
    EXPECT_TRUE(cut.ends_with(L"\n  NULL\n\u2026 and 99001 more | \u2026 and 99001 more"));
}

TEST_F(TextTest, UnknownValuesAreOutlinedOnlyWhenTheyAreWellFormed) {
    const struct {
        const char* name;
        Octets octets;
        const wchar_t* text;
    } cases[] = {
        {"one", {0x02, 0x01, 0x05}, L"INTEGER: 5"},
        {"two", {0x05, 0x00, 0x05, 0x00}, L"NULL\nNULL"},
        {"indefinite", {0x30, 0x80, 0x05, 0x00, 0x00, 0x00}, L"SEQUENCE\n  NULL"},
        {"octets behind", {0x05, 0x00, 0x05}, L"050005"},
        {"no end of contents", {0x30, 0x80, 0x05, 0x00}, L"30800500"},
        {"member past its parent", {0x30, 0x02, 0x04, 0x01, 0xAA}, L"30020401aa"},
        {"long length past the end", {0x04, 0x84, 0xFF, 0xFF, 0xFF, 0xFF}, L"0484ffffffff"},
        {"zeros", {0x00, 0x00}, L"0000"},
        {"none", {}, L""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ca::CTextLines lines;
        ca::SayUnknownValue(c.octets, lines);
        EXPECT_EQ(c.text, lines.Take());
    }
}

TEST_F(TextTest, LinesPastTheBoundAreCounted) {
    ca::CTextLines lines;
    const std::wstring line(ca::kMaxValueText / 2, L'a');
    for (int i = 0; i < 5; ++i) {
        const ca::CTextLines::Level level(lines);
        lines.Line(line);
    }
    lines.Append(L"b");
    lines.Line(L"c", L"d");
    const std::wstring text = lines.Take();
    EXPECT_TRUE(text.ends_with(L"a\n\u2026 and 4 more")) << text.substr(text.size() - 20);
    EXPECT_EQ(L"\u2026 and 4 more", lines.TakeFaults());
    lines.Line(L"a", L"");
    lines.Append(L"b");
    EXPECT_EQ(L"a:b", lines.Take());
}

}  // namespace
