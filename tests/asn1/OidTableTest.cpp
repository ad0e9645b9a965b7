#include "asn1/Oid.h"

#include <gtest/gtest.h>

#include <cstring>
#include <cwchar>
#include <set>
#include <string>
#include <vector>

namespace {

using Octets = std::vector<unsigned char>;
using Arcs = std::vector<unsigned long>;

Arcs ParseArcs(const wchar_t* dotted) {
    Arcs arcs;
    wchar_t* end = nullptr;
    for (const wchar_t* at = dotted;; at = end + 1) {
        arcs.push_back(std::wcstoul(at, &end, 10));
        if (*end != L'.') {
            EXPECT_EQ(L'\0', *end) << "not a dotted text";
            return arcs;
        }
    }
}

// An encoder that knows nothing of the table's own.
Octets EncodeArcs(const Arcs& arcs) {
    Octets out;
    for (std::size_t i = 1; i < arcs.size(); ++i) {
        unsigned long arc = i == 1 ? arcs[0] * 40 + arcs[1] : arcs[i];
        Octets groups{static_cast<unsigned char>(arc & 0x7F)};
        while ((arc >>= 7) != 0) {
            groups.insert(groups.begin(), static_cast<unsigned char>(0x80 | (arc & 0x7F)));
        }
        out.insert(out.end(), groups.begin(), groups.end());
    }
    return out;
}

class OidTableTest : public testing::Test {
  protected:
    void TearDown() override { SetZORNALng(L"ru"); }
};

TEST_F(OidTableTest, RowsAreOrderedByTheirArcs) {
    Arcs previous;
    for (const ca::OidInfo& row : ca::AllOids()) {
        const Arcs arcs = ParseArcs(row.dotted);
        EXPECT_LT(previous, arcs) << row.shortName;
        previous = arcs;
    }
}

TEST_F(OidTableTest, EveryRowHasTextsAndAShortNameOfItsOwn) {
    std::set<std::string> names;
    for (const ca::OidInfo& row : ca::AllOids()) {
        SCOPED_TRACE(row.shortName);
        EXPECT_TRUE(names.insert(row.shortName).second) << "short name twice";
        EXPECT_NE(0U, std::strlen(row.shortName));
        EXPECT_STRNE(L"", row.english);
        EXPECT_STRNE(L"", row.russian);
    }
}

TEST_F(OidTableTest, EveryRowIsFoundByOctetsTextAndShortName) {
    for (const ca::OidInfo& row : ca::AllOids()) {
        SCOPED_TRACE(row.shortName);
        const Octets encoded = EncodeArcs(ParseArcs(row.dotted));
        EXPECT_EQ(&row, ca::FindOid(encoded));
        EXPECT_EQ(&row, ca::FindOidByText(row.dotted));
        EXPECT_EQ(&row, ca::FindOidByShortName(row.shortName));
        EXPECT_EQ(row.dotted, ca::OidText(encoded));
    }
}

TEST_F(OidTableTest, AConstantIsOctetsTextAndRow) {
    constexpr ca::COid kType = "CN";
    const Octets commonName{0x55, 0x04, 0x03};
    EXPECT_EQ(kType, ca::FindOid(commonName));
    EXPECT_NE(ca::COid("C"), ca::FindOid(commonName));
    EXPECT_STREQ(L"2.5.4.3", kType->dotted);
    EXPECT_TRUE(ca::IsOid(commonName, "CN"));
    for (const Octets& other : {Octets{}, Octets{0x55, 0x04}, Octets{0x55, 0x04, 0x03, 0x00}}) {
        EXPECT_FALSE(ca::IsOid(other, "CN"));
    }
}

TEST_F(OidTableTest, FindsNothingForWhatIsNoRow) {
    const Octets octets[] = {{},
                             {0x55},
                             {0x55, 0x04},
                             {0x55, 0x04, 0x83},        // cut inside an arc
                             {0x55, 0x04, 0x80, 0x03},  // 2.5.4.3 with a padded arc
                             {0x55, 0x04, 0x03, 0x00},
                             {0x55, 0x04, 0x90, 0x80, 0x80, 0x80, 0x03},  // 2.5.4.(2^32 + 3)
                             Octets(1000, 0x55)};
    for (const Octets& encoded : octets) {
        EXPECT_EQ(nullptr, ca::FindOid(encoded)) << encoded.size();
    }
    for (const wchar_t* text :
         {L"", L"2", L"2.5.4", L"2.5.4.3.", L".2.5.4.3", L"2.5.4.03", L"2..5.4.3", L"2.5.4.-3",
          L"2.5.4.4294967299", L"1.165.4.3", L"3.5.4.3", L"2.5.4.3 ", L"2.5.4.18446744073709551619",
          L"2.5.4.3.1.1.1.1.1.1.1.1.1.1.1.1.1.1.1.1.1.1"}) {
        EXPECT_EQ(nullptr, ca::FindOidByText(text)) << testing::PrintToString(std::wstring(text));
    }
    for (const char* name : {"", "cn", "CN ", "no such name"}) {
        EXPECT_EQ(nullptr, ca::FindOidByShortName(name)) << name;
    }
}

TEST_F(OidTableTest, NamesFollowTheLanguage) {
    const Octets commonName{0x55, 0x04, 0x03};
    const Octets unknown{0x2A, 0x03, 0x04};
    SetZORNALng(L"en");
    EXPECT_EQ(L"Common name", ca::OidName(commonName));
    EXPECT_EQ(L"1.2.3.4", ca::OidName(unknown));
    SetZORNALng(L"ru");
    EXPECT_EQ(L"Общее имя", ca::OidName(commonName));
    EXPECT_EQ(ca::OidKind::kNameAttribute, ca::FindOid(commonName)->kind);
}

TEST_F(OidTableTest, ShowsArcsOfAnySize) {
    // A UUID arc (X.667): 2.25 and 128 bits, all set.
    Octets uuid{0x69, 0x83};
    uuid.insert(uuid.end(), 17, 0xFF);
    uuid.push_back(0x7F);
    const struct {
        const wchar_t* text;
        Octets encoded;
    } cases[] = {
        {L"0.39", {0x27}},
        {L"1.0", {0x28}},
        {L"1.39", {0x4F}},
        {L"2.0", {0x50}},
        {L"2.999.3", {0x88, 0x37, 0x03}},
        {L"1.2.4294967296", {0x2A, 0x90, 0x80, 0x80, 0x80, 0x00}},
        {L"1.2.1000000000", {0x2A, 0x83, 0xDC, 0xEB, 0x94, 0x00}},
        {L"1.2.0.1", {0x2A, 0x00, 0x80, 0x01}},
        {L"2.25.340282366920938463463374607431768211455", uuid},
        {L"2.999999920", {0x83, 0xDC, 0xEB, 0x94, 0x00}},
        {L"#", {}},
        {L"#2a86", {0x2A, 0x86}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.text, ca::OidText(c.encoded));
    }
}

TEST_F(OidTableTest, BoundsTheTextOfHostileIdentifiers) {
    Octets oneArc(256, 0xFF);
    oneArc.back() = 0x7F;
    EXPECT_EQ(2 + 540U, ca::OidText(oneArc).size());  // "2." and 2^1792 - 81
    EXPECT_EQ(1 + 512 + 3U, ca::OidText(Octets(257, 0x01)).size());
    EXPECT_EQ(1 + 512 + 3U, ca::OidText(Octets(1000000, 0xFF)).size());
}

}  // namespace
