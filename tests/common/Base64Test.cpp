#include "common/Base64Paths.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/HeapPtr.h"
#include "tests/common/GuardedBuffer.h"

#include <QByteArray>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

constexpr std::size_t kLongest = 400;

struct Decoded {
    std::string octets;
    std::size_t consumed = 0;
};

// The stopping rules one character at a time, bit by bit.
Decoded Expected(const std::string& text) {
    Decoded result;
    unsigned bits = 0;
    int held = 0;
    for (; result.consumed < text.size(); ++result.consumed) {
        const char c = text[result.consumed];
        if (c == '\r' || c == '\n') {
            continue;
        }
        const std::size_t value = base64_chars.find(c);
        if (value == std::string::npos) {
            break;
        }
        bits = bits << 6 | static_cast<unsigned>(value);
        held += 6;
        if (held >= 8) {
            held -= 8;
            result.octets += static_cast<char>(bits >> held);
        }
    }
    return result;
}

using DecodeFunction = Base64Run (*)(const char*, std::size_t, unsigned char*);

struct DecodePath {
    const char* name;
    DecodeFunction decode;
    bool (*available)();
};

class Base64DecodeTest : public testing::TestWithParam<DecodePath> {
  protected:
    void SetUp() override {
        if (!GetParam().available()) {
            GTEST_SKIP() << "not on this processor";
        }
    }

    // Decodes from and into buffers that end before a forbidden page.
    void Check(const std::string& text) {
        const std::size_t room = (text.size() + 3) / 4 * 3;
        auto* const out = reinterpret_cast<unsigned char*>(m_out.Last(room));
        const Base64Run run = GetParam().decode(m_in.Hold(text), text.size(), out);
        const Decoded expected = Expected(text);
        ASSERT_EQ(expected.consumed, run.consumed) << text;
        ASSERT_EQ(expected.octets, std::string(m_out.Last(room), run.written)) << text;
    }

    std::string RandomText(std::size_t length) {
        std::string text(length, '\0');
        std::generate(text.begin(), text.end(), [this] { return base64_chars[m_random() % 64]; });
        return text;
    }

    std::mt19937 m_random{20240208};

  private:
    GuardedBuffer m_in{kLongest * 2};
    GuardedBuffer m_out{kLongest * 2};
};

TEST_P(Base64DecodeTest, StopsAtEveryCharacterOutsideTheAlphabet) {
    for (int c = 0; c < 256; ++c) {
        for (const std::size_t at : {0U, 3U, 17U, 46U, 75U, 110U}) {
            std::string text = RandomText(150);
            text[at] = static_cast<char>(c);
            Check(text);
        }
    }
}

TEST_P(Base64DecodeTest, StaysInsideItsBuffersAtEveryLength) {
    for (std::size_t length = 0; length < kLongest; ++length) {
        Check(RandomText(length));
        Check(RandomText(length) + "=");
        Check(RandomText(length) + "!" + RandomText(length % 50));
    }
}

TEST_P(Base64DecodeTest, SkipsLineBreaksWhereverTheyStand) {
    for (const char* lineBreak : {"\r\n", "\n", "\r", "\n\r\n\n"}) {
        for (std::size_t columns = 1; columns < 140; ++columns) {
            std::string text;
            while (text.size() < 280) {
                text += RandomText(columns) + lineBreak;
            }
            Check(text);
            Check(lineBreak + text + "QQ==");
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Paths, Base64DecodeTest,
    testing::Values(DecodePath{"Plain", ca::base64::DecodePlain, [] { return true; }},
                    DecodePath{"Avx2", ca::base64::DecodeAvx2, ca::base64::HasAvx2},
                    DecodePath{"Chosen", base64_decode_run, [] { return true; }}),
    [](const auto& path) { return std::string(path.param.name); });

std::string Decode(const char* text) {
    unsigned char* out = nullptr;
    unsigned length = 0;
    const unsigned result = ca::Base64Decode(text, &out, length);
    const ca::BytePtr owner(out);
    EXPECT_EQ(result, length);
    return {reinterpret_cast<const char*>(out), length};
}

std::uint32_t DecodeFault(const char* text) {
    try {
        Decode(text);
    } catch (const ca::Exception& e) {
        return e.errorCode;
    }
    return ca::kErrNone;
}

TEST(Base64Test, DecodesWithAndWithoutPadding) {
    EXPECT_EQ("Ma", Decode("TWE="));
    EXPECT_EQ("Ma", Decode("TWE"));
    EXPECT_EQ("ABC", Decode("QUJD!RERE"));
    EXPECT_EQ(ca::kErrNoArgumentData, DecodeFault("T"));
    EXPECT_EQ(ca::kErrNoArgumentData, DecodeFault("-QUJD"));
    EXPECT_EQ(ca::kErrNoArgumentData, DecodeFault("\r\n"));
}

TEST(Base64Test, LeavesTheBufferPointerOfAnEmptyText) {
    unsigned char before = 0;
    unsigned char* out = &before;
    unsigned length = 5;
    EXPECT_EQ(0U, ca::Base64Decode("", &out, length));
    EXPECT_EQ(&before, out);
    EXPECT_EQ(0U, length);
}

TEST(Base64Test, EncodesAsTheToolkitDoes) {
    std::mt19937 random(8);
    for (unsigned length = 0; length < 200; ++length) {
        std::string octets(length, '\0');
        std::generate(octets.begin(), octets.end(), [&] { return static_cast<char>(random()); });
        const auto* data = reinterpret_cast<const unsigned char*>(octets.data());
        const auto expected = QByteArray::fromStdString(octets).toBase64().toStdString();
        std::string text = "before";
        ca::Base64Encode(data, length, text);
        ASSERT_EQ(expected, text);

        const GuardedBuffer out(expected.size() + 1);
        unsigned written = 1;
        ASSERT_EQ(expected.size(), base64_encode(data, length, out.Last(expected.size()), written));
        ASSERT_EQ(expected, std::string(out.Last(expected.size()), written));
    }
}

TEST(Base64Test, RefusesToEncodeWhatNeedsMoreThan32Bits) {
    unsigned length = 7;
    try {
        base64_encode(nullptr, 3221225470U, nullptr, length);
        FAIL() << "4294967296 characters were promised";
    } catch (const ca::Exception& e) {
        EXPECT_EQ(ca::kErrExecution, e.errorCode);
    }
    EXPECT_EQ(0U, length);
}

TEST(Base64Test, KnowsBase64TextByItsCharacters) {
    EXPECT_TRUE(ca::_IsBase64String("", 0));
    EXPECT_TRUE(ca::_IsBase64String("QU+/\r\nJD==", 0));
    EXPECT_FALSE(ca::_IsBase64String("QU-JD", 0));
    EXPECT_TRUE(ca::_IsBase64String("QU-JD", 2));
    EXPECT_TRUE(ca::_IsBase64String("QU\0-", 4));
    for (int c = 0x80; c < 0x100; ++c) {
        EXPECT_FALSE(ca::_IsBase64String(std::string(1, static_cast<char>(c)).c_str(), 0)) << c;
    }
    const GuardedBuffer buffer(8);
    EXPECT_TRUE(ca::_IsBase64String(buffer.Hold("QUJDQUJD"), 8));
}

TEST(Base64Test, FindsTheBodyInsideItsWrapper) {
    const std::vector<ca::Base64Wrapper> pem = {{"-----BEGIN A-----", "-----END A-----"},
                                                {"<", "<"}};
    const std::vector<ca::Base64Wrapper> bare = {{"", ""}};
    const struct {
        const char* data;
        const std::vector<ca::Base64Wrapper>& wrappers;
        const char* octets;
    } cases[] = {
        {"-----BEGIN A-----\r\nQUJD\r\n-----END A-----", pem, "ABC"},
        {"-----BEGIN A-----\nQUJD\n-----END A-----\n", pem, "ABC"},
        {"-----BEGIN A-----\nQUJD\n", pem, "ABC"},
        {"<QUJD<", pem, "ABC"},
        {"QUJD", pem, "ABC"},
        {"QUJD", bare, "ABC"},
        {"QU-JD", pem, ""},
        {"-----BEGIN A-----", pem, ""},  // not longer than the prefix
        {"", pem, ""},
        {"", bare, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.data);
        const std::string_view text(c.data);
        const GuardedBuffer buffer(text.size() + 1);
        unsigned char* out = nullptr;
        unsigned length = 1;
        const auto* data = reinterpret_cast<const unsigned char*>(buffer.Hold(text));
        const bool decoded = ca::DecodeBase64IfNeeded(data, static_cast<unsigned>(text.size()),
                                                      c.wrappers, &out, length);
        const ca::BytePtr owner(out);
        EXPECT_EQ(c.octets, std::string(reinterpret_cast<const char*>(out), length));
        EXPECT_EQ(length != 0, decoded);
    }
}

TEST(Base64Test, ReportsABodyThatDoesNotDecode) {
    const std::vector<ca::Base64Wrapper> wrappers = {{"<", ">"}};
    const unsigned char data[] = "<->";
    unsigned char* out = nullptr;
    unsigned length = 0;
    EXPECT_THROW(ca::DecodeBase64IfNeeded(data, 3, wrappers, &out, length), ca::Exception);
    EXPECT_EQ(nullptr, out);
}

}  // namespace
