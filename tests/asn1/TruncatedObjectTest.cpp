#include "asn1/Asn1Element.h"
#include "asn1/TruncatedObject.h"
#include "tests/asn1/DerWriter.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// Elements one after the other, whatever is in the constructed ones.
bool IsWhole(std::span<unsigned char> octets) {
    std::vector<CAsn1Cursor> open{CAsn1Cursor(octets)};
    while (!open.empty()) {
        CAsn1Element element;
        if (open.back().AtEnd()) {
            open.pop_back();
        } else if (open.back().Next(element) != Asn1Fault::kNone) {
            return false;
        } else if (element.IsConstructed()) {
            open.emplace_back(element.content);
        }
    }
    return true;
}

TEST(TruncatedObjectTest, EndsWhatIsOpenWhereTheOctetsEnd) {
    const Octets number = {2, 1, 5};
    const Octets text = {0x0C, 3, 'a', 'b', 'c'};
    const Octets inner = Tlv(0x30, {number, text});
    const Octets far = Tlv(0x30, {number, Tlv(0x30, Tlv(0x04, Octets(200, 7)))});
    const struct {
        const char* name;
        Octets octets;
        std::size_t size;  // of what is there
        Octets mended;     // empty: nothing
    } cases[] = {
        {"whole", inner, inner.size(), {}},
        {"nothing", inner, 0, {}},
        {"an identifier", inner, 1, {}},
        {"a value is left out", inner, 9, {0x30, 3, 2, 1, 5}},
        {"so is a header", inner, 6, {0x30, 3, 2, 1, 5}},
        {"lengths keep their octets", far, 20, {0x30, 0x81, 6, 2, 1, 5, 0x30, 0x81, 0}},
        {"an encoding stays", Tlv(0x30, Tlv(0x04, inner)), 8, {0x30, 6, 4, 4, 0x30, 8, 2, 1}},
        {"indefinite",
         Indefinite(0x30, {number, Indefinite(0xA0, {text})}),
         10,
         {0x30, 0x80, 2, 1, 5, 0xA0, 0x80, 0, 0, 0, 0}},
        {"definite in indefinite",
         Indefinite(0x30, {inner}),
         8,
         {0x30, 0x80, 0x30, 3, 2, 1, 5, 0, 0}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Octets octets = c.octets;
        octets.resize(c.size);
        const auto mended = MendTruncated(octets);
        EXPECT_EQ(c.mended, mended ? mended->octets : Octets());
    }
}

TEST(TruncatedObjectTest, MendsAnyBeginning) {
    const Octets leaf = Tlv(0x30, {{2, 1, 5}, Tlv(0x0C, Octets(130, 'x')), {0x05, 0x00}});
    const Octets object = Tlv(0x30, {leaf, Indefinite(0xA1, {leaf, Indefinite(0x24, {{4, 1, 9}})}),
                                     Tlv(0x04, Octets(300, 7)), leaf});
    for (std::size_t size = 5; size < object.size(); ++size) {
        SCOPED_TRACE(size);
        Octets octets(object.begin(), object.begin() + static_cast<std::ptrdiff_t>(size));
        auto mended = MendTruncated(octets);
        ASSERT_TRUE(mended.has_value());
        EXPECT_TRUE(IsWhole(mended->octets));
        EXPECT_LE(mended->end, size);
    }
    // As deep as the octets say: no more is opened than has a place.
    Octets deep;
    for (int i = 0; i < 5000; ++i) {
        deep.insert(deep.end(), {0x30, 0x80});
    }
    const auto mended = MendTruncated(deep);
    ASSERT_TRUE(mended.has_value());
    EXPECT_EQ(4 * 64U, mended->octets.size());
}

}  // namespace
