#include "common/Encode.h"
#include "common/JsonString.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

std::string Written(const std::wstring& text) {
    ca::JsonBuffer buffer;
    ca::JsonWriter writer(buffer);
    ca::WriteString(writer, text);
    return {buffer.GetString(), buffer.GetSize()};
}

// As rapidjson does it, an octet at a time.
std::string Expected(const std::wstring& text) {
    ca::JsonBuffer buffer;
    ca::JsonWriter writer(buffer);
    writer.String(ca::u16u8(text));
    return {buffer.GetString(), buffer.GetSize()};
}

TEST(JsonStringTest, WritesOddCharactersAtEveryPlace) {
    for (const wchar_t odd : {L'"', L'\\', L'\n', L'\t', L'\x1F', L'\x7F', L'\x80', L'\xFF', L'ж',
                              L'\x7FFF', L'\xFFFF', L'\x10022', L'\x1F600', L'\x110000'}) {
        for (std::size_t length = 1; length < 50; ++length) {
            for (std::size_t place = 0; place < length; ++place) {
                std::wstring text(length, L'a');
                text[place] = odd;
                ASSERT_EQ(Expected(text), Written(text)) << length << ' ' << place;
            }
        }
    }
}

TEST(JsonStringTest, WritesPlainTextsOfAnyLength) {
    std::mt19937 random(1);
    for (std::size_t length = 0; length < 200; ++length) {
        std::wstring text(length, L' ');
        for (wchar_t& c : text) {
            c = static_cast<wchar_t>(L'#' + static_cast<wchar_t>(random() % 0x39));
        }
        ASSERT_EQ(Expected(text), Written(text));
    }
}

}  // namespace
