#include "common/Encode.h"
#include "common/UtfPaths.h"

#include <QString>
#include <QVector>
#include <gtest/gtest.h>

#include <array>
#include <stdexcept>

namespace {

std::wstring ToolkitWide(const std::string& text) {
    const QVector<uint> codes =
        QString::fromUtf8(text.data(), static_cast<int>(text.size())).toUcs4();
    return {codes.begin(), codes.end()};
}

std::string ToolkitNarrow(const std::wstring& text) {
    const QVector<uint> codes(text.begin(), text.end());
    return QString::fromUcs4(codes.data(), codes.size()).toUtf8().toStdString();
}

// By the path that the processor has, once the plain one gave the same.
std::wstring Wide(const std::string& text) {
    std::wstring plain;
    ca::utf::Widen(text.data(), text.size(), plain, ca::utf::Path::kPlain);
    std::wstring best = ca::u8u16(text);
    EXPECT_EQ(plain, best);
    return best;
}

std::string Narrow(const std::wstring& text) {
    std::string plain;
    ca::utf::Narrow(text.data(), text.size(), plain, ca::utf::Path::kPlain);
    std::string best = ca::u16u8(text);
    EXPECT_EQ(plain, best);
    return best;
}

// Surrounds the octets by text long enough for whole vectors, at a place that differs from call to
// call.
std::string Surrounded(const std::string& octets) {
    static const std::string cyrillic = "абвгдежзийклмнопрстуф";
    static const std::string ascii = "abcdefghijklmnopqrstu";
    static std::size_t turn = 0;
    turn = (turn + 1) % 21;
    return cyrillic.substr(2 * turn) + ascii.substr(turn) + octets + cyrillic.substr(2 * turn) +
           octets + ascii;
}

TEST(UtfTest, DecodesEveryShortSequenceAsTheToolkitDoes) {
    for (int first = 0; first < 0x100; ++first) {
        const std::string one(1, static_cast<char>(first));
        ASSERT_EQ(ToolkitWide(one), Wide(one)) << first;
        for (int second = 0; second < 0x100; ++second) {
            const std::string two = one + static_cast<char>(second);
            ASSERT_EQ(ToolkitWide(two), Wide(two)) << first << ' ' << second;
            const std::string text = Surrounded(two);
            ASSERT_EQ(ToolkitWide(text), Wide(text)) << first << ' ' << second;
        }
    }
}

TEST(UtfTest, DecodesLongSequencesAsTheToolkitDoes) {
    // Around the bounds of every row of RFC 3629's table of well-formed sequences.
    constexpr std::array<unsigned char, 10> kOctets = {0x00, 0x7F, 0x80, 0x8F, 0x90,
                                                       0x9F, 0xA0, 0xBF, 0xC0, 0xFF};
    for (int first = 0xC0; first < 0x100; ++first) {
        for (const unsigned char second : kOctets) {
            for (const unsigned char third : kOctets) {
                std::string octets;
                for (const int octet : {first, int{second}, int{third}}) {
                    octets += static_cast<char>(octet);
                }
                ASSERT_EQ(ToolkitWide(octets), Wide(octets));
                for (const int last : {0x41, 0x7F, 0x80, 0xBF, 0xC0}) {
                    const std::string text = Surrounded(octets + static_cast<char>(last));
                    ASSERT_EQ(ToolkitWide(text), Wide(text)) << first << ' ' << second;
                }
            }
        }
    }
}

TEST(UtfTest, CarriesEveryCodePointBothWays) {
    std::wstring all;
    for (wchar_t code = 1; code <= 0x10FFFF; ++code) {
        if (code < 0xD800 || code > 0xDFFF) {
            all += code;
        }
    }
    const std::string narrow = Narrow(all);
    EXPECT_EQ(ToolkitNarrow(all), narrow);
    EXPECT_EQ(all, Wide(narrow));
}

TEST(UtfTest, TreatsSurrogatesAndByteOrderMarksAsTheToolkitDoes) {
    constexpr wchar_t kCodes[] = {L'a',   0x7F,   0x80,   0x430,  0x7FF,  0x800,  0xD7FF, 0xD800,
                                  0xDBFF, 0xDC00, 0xDFFF, 0xE000, 0xFEFF, 0xFFFD, 0xFFFF, 0x1F600};
    for (const wchar_t first : kCodes) {
        for (const wchar_t second : kCodes) {
            for (const wchar_t third : kCodes) {
                const std::wstring three = {first, second, third};
                ASSERT_EQ(ToolkitNarrow(three), Narrow(three));
                const std::wstring text = three + L"привет, abcdefghi" + three;
                ASSERT_EQ(ToolkitNarrow(text), Narrow(text));
            }
        }
    }
    EXPECT_EQ(L"a\xFEFF", Wide("\xEF\xBB\xBF"
                               "a\xEF\xBB\xBF"));
}

TEST(UtfTest, ReplacesValuesThatAreNoCodePoints) {
    for (const unsigned value : {0x110000U, 0x200041U, 0x7FFFFFFFU, 0x80000041U, 0xFFFFFFFFU}) {
        const auto wide = static_cast<wchar_t>(value);
        EXPECT_EQ("\xEF\xBF\xBD", Narrow(std::wstring(1, wide))) << value;
        EXPECT_EQ(
            "abc\xEF\xBF\xBD"
            "defghijk",
            Narrow(std::wstring(L"abc") + wide + L"defghijk"))
            << value;
    }
}

TEST(UtfTest, ConvertsLongTextWhole) {
    std::string text;
    for (int i = 0; i < 700; ++i) {
        text += "Имя поля " + std::to_string(i) + " \xE2\x82\xAC \xF0\x9F\x98\x80 \xFF;";
    }
    EXPECT_EQ(ToolkitWide(text), Wide(text));
    const std::wstring wide = Wide(text);
    EXPECT_EQ(ToolkitNarrow(wide), Narrow(wide));
    EXPECT_EQ(ToolkitNarrow(wide), CW2A(wide.c_str()));
}

TEST(UtfTest, ChangesItsStepAnywhereInALongText) {
    std::string letters;
    for (int before = 0; before < 24; ++before) {
        for (std::size_t ascii = 470; ascii < 530; ++ascii) {
            const std::string text =
                letters + std::string(ascii, 'a') + std::string(40, '\xD5') + "abcdefgh";
            ASSERT_EQ(ToolkitWide(text), Wide(text)) << before << ' ' << ascii;
        }
        letters += "\u044F";
    }
}

TEST(UtfTest, ReadsToTheNulAndRefusesNull) {
    std::string narrow = "before";
    ca::u16u8(L"я\0b", narrow);
    EXPECT_EQ("я", narrow);
    EXPECT_EQ("a", ca::u16u8(std::wstring(L"a\0b", 3)));
    std::wstring wide = L"before";
    ca::u8u16("", wide);
    EXPECT_EQ(L"", wide);

    const char* const noText = nullptr;
    const wchar_t* const noWide = nullptr;
    EXPECT_THROW(ca::u8u16(noText, wide), std::logic_error);
    EXPECT_THROW(ca::u16u8(noWide, narrow), std::logic_error);
    EXPECT_THROW(CW2A(noWide), std::logic_error);
}

}  // namespace
