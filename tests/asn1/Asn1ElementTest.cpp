#include "asn1/Asn1Damage.h"
#include "asn1/Asn1Element.h"
#include "tests/asn1/DerWriter.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

Asn1Fault ReadOne(Octets octets, CAsn1Element& element) {
    return CAsn1Cursor(octets).Next(element);
}

TEST(Asn1ElementTest, FindsContentAndEndOfEachLengthForm) {
    const struct {
        const char* name;
        Octets octets;
        std::size_t raw;
        std::size_t content;
    } cases[] = {
        {"empty", {0x04, 0x00}, 2, 0},
        {"short, with more behind", {0x04, 0x01, 0xAA, 0x05, 0x00}, 3, 1},
        {"not minimal", {0x04, 0x81, 0x01, 0xAA}, 4, 1},
        {"wider than 64 bits", {0x04, 0x89, 0, 0, 0, 0, 0, 0, 0, 0, 0x01, 0xAA}, 12, 1},
        {"indefinite, empty", {0x30, 0x80, 0x00, 0x00}, 4, 0},
        {"indefinite", {0x30, 0x80, 0x02, 0x01, 0x05, 0x00, 0x00}, 7, 3},
        {"zeros inside", Indefinite(0x30, {Tlv(0x04, Octets(4, 0x00))}), 10, 6},
        {"nested", Indefinite(0x30, {Indefinite(0xA0, {{0x05, 0x00}}), {0x30, 0x00}}), 12, 8},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        CAsn1Element element;
        ASSERT_EQ(Asn1Fault::kNone, ReadOne(c.octets, element));
        EXPECT_EQ(c.raw, element.raw.size());
        EXPECT_EQ(c.content, element.content.size());
    }
}

TEST(Asn1ElementTest, RefusesWhatIsNoElement) {
    const struct {
        const char* name;
        Octets octets;
        Asn1Fault fault;
    } cases[] = {
        {"content behind the end", {0x04, 0x02, 0xAA}, Asn1Fault::kTruncated},
        {"4 GiB", {0x04, 0x84, 0xFF, 0xFF, 0xFF, 0xFF, 0x00}, Asn1Fault::kTruncated},
        {"2^32 + 1 is not 1", {0x04, 0x85, 1, 0, 0, 0, 1, 0xAA}, Asn1Fault::kTruncated},
        {"126 length octets", Join({{0x04}, Octets(130, 0xFE)}), Asn1Fault::kTruncated},
        {"reserved length", {0x04, 0xFF, 0x00, 0x00}, Asn1Fault::kMalformed},
        {"high tag number", {0x1F, 0x03, 0x00, 0x00, 0x00}, Asn1Fault::kMalformed},
        {"end-of-contents alone", {0x00, 0x00}, Asn1Fault::kMalformed},
        {"indefinite primitive", {0x04, 0x80, 0x00, 0x00}, Asn1Fault::kMalformed},
        {"inner element overruns", {0x30, 0x80, 0x04, 0x03, 0x00, 0x00}, Asn1Fault::kTruncated},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        CAsn1Element element;
        EXPECT_EQ(c.fault, ReadOne(c.octets, element));
        EXPECT_TRUE(element.raw.empty());
    }
}

TEST(Asn1ElementTest, EveryPrefixIsTruncated) {
    const Octets whole = Indefinite(0x30, {Tlv(0x04, Octets(200, 0x11)), Indefinite(0x24, {})});
    for (std::size_t size = 0; size < whole.size(); ++size) {
        Octets prefix(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        CAsn1Element element;
        EXPECT_EQ(Asn1Fault::kTruncated, ReadOne(prefix, element)) << size;
    }
}

TEST(Asn1ElementTest, FindsTheEndOfAMillionOpenLevels) {
    constexpr std::size_t kLevels = 1000000;
    Octets octets;
    for (std::size_t i = 0; i < kLevels; ++i) {
        octets.push_back(0x30);
        octets.push_back(0x80);
    }
    CAsn1Element element;
    EXPECT_EQ(Asn1Fault::kTruncated, ReadOne(octets, element));
    octets.resize(4 * kLevels, 0x00);
    CAsn1Cursor cursor(octets);
    EXPECT_EQ(Asn1Fault::kNone, cursor.Next(element));
    EXPECT_TRUE(cursor.AtEnd());
}

TEST(Asn1ElementTest, TellsWhereOctetsStopBeingElements) {
    using enum Asn1Fault;
    const struct {
        const char* name;
        Octets octets;
        Asn1Fault fault;
        std::size_t offset;
        std::size_t announced;
        std::size_t available;
    } cases[] = {
        {"cut content", {0x30, 0x05, 0x04, 0x03, 0xAA}, kTruncated, 0, 5, 3},
        {"child longer than its parent", {0x30, 0x03, 0x04, 0x02, 0xAA, 0x05}, kTruncated, 2, 2, 1},
        {"cut length", {0x05, 0x00, 0x04, 0x82, 0x01}, kTruncated, 2, 0, 1},
        {"no end of contents", {0x30, 0x80, 0x05, 0x00}, kTruncated, 4, 0, 0},
        {"zeros", {0x05, 0x00, 0x00, 0x00}, kMalformed, 2, 0, 0},
        {"indefinite primitive", {0x30, 0x02, 0x04, 0x80}, kMalformed, 2, 0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto damage = ca::FindAsn1Damage(c.octets);
        ASSERT_TRUE(damage.has_value());
        EXPECT_EQ(c.fault, damage->fault);
        EXPECT_EQ(c.offset, damage->offset);
        EXPECT_EQ(c.announced, damage->announced);
        EXPECT_EQ(c.available, damage->available);
    }
    EXPECT_FALSE(ca::FindAsn1Damage(Octets{0x30, 0x80, 0x30, 0x00, 0x00, 0x00, 0x05, 0x00}));
    EXPECT_FALSE(ca::FindAsn1Damage({}));
}

}  // namespace
