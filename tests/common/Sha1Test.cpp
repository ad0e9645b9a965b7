#include "common/sha1.h"

#include <QCryptographicHash>
#include <gtest/gtest.h>

#include <sstream>

namespace {

std::wstring Widen(const QByteArray& octets) {
    std::wstring wide;
    for (const char c : octets) {
        wide += static_cast<wchar_t>(static_cast<unsigned char>(c));
    }
    return wide;
}

TEST(Sha1Test, GivesThePublishedDigests) {
    SHA1 sha1;
    EXPECT_EQ(L"da39a3ee5e6b4b0d3255bfef95601890afd80709", sha1.GetHash(L""));
    EXPECT_EQ(L"a9993e364706816aba3e25717850c26c9cd0d89d", sha1.GetHash(L"abc"));
    EXPECT_EQ(L"34aa973cd4c4daa4f61eeb2bdbad27316534016f",
              sha1.GetHash(std::wstring(1000000, L'a')));
}

TEST(Sha1Test, PadsEveryLengthAsTheToolkitDoes) {
    SHA1 sha1;
    QByteArray octets;
    for (int i = 0; i < 200; ++i) {
        const QByteArray digest =
            QCryptographicHash::hash(octets, QCryptographicHash::Sha1).toHex();
        ASSERT_EQ(Widen(digest), sha1.GetHash(Widen(octets))) << i;
        octets += static_cast<char>(i * 37);
    }
}

TEST(Sha1Test, GivesOneDigestHoweverTheInputComes) {
    const std::wstring text(5000, L'\xE9');
    SHA1 whole;
    const std::wstring expected = whole.GetHash(text);
    SHA1 pieces;
    for (std::size_t at = 0, size = 1; at < text.size(); at += size, ++size) {
        pieces.Update(text.substr(at, size));
    }
    EXPECT_EQ(expected, pieces.Final());
    std::wistringstream stream(text);
    pieces.Update(stream);
    EXPECT_EQ(expected, pieces.Final());
    pieces.Update(L"left over");
    EXPECT_EQ(expected, pieces.GetHash(text));
}

TEST(Sha1Test, TakesTheLowOctetOfEachCharacter) {
    SHA1 sha1;
    const std::wstring low = sha1.GetHash(L"abc");
    EXPECT_EQ(low, sha1.GetHash(L"\x461\x10062\xFF63"));
}

}  // namespace
