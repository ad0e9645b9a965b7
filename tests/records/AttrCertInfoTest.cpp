#include "common/ErrorCodes.h"
#include "records/fill/AttrCertInfoFill.h"
#include "records/fill/CrlInfoFill.h"
#include "records/scan/LooksLike.h"
#include "tests/asn1/DerWriter.h"
#include "tests/common/EnglishTest.h"
#include "tests/records/RecordTesting.h"

#include <cstddef>
#include <string>

namespace {

const Octets kAlgorithm = Algorithm("1.2.840.10045.4.3.2");
const Octets& kSha256 = kSha256Algorithm;
const Octets kPeriod =
    Tlv(0x30, {Tlv(0x18, Text("20240101000000Z")), Tlv(0x18, Text("20990101000000Z"))});
const Octets kSignature = Tlv(0x03, {0x00, 0x01});
const Octets kRegisteredRole = Tlv(0x88, {0x2A, 0x03});

Octets Directory(const char* commonName) {
    return Tlv(0xA4, Name(commonName));
}
Octets IssuerSerial(unsigned char tag, const char* issuer) {
    return Tlv(tag, {Tlv(0x30, Directory(issuer)), {0x02, 0x02, 0x00, 0xAB}});
}
Octets Digest(unsigned char tag) {
    return Tlv(tag, {{0x0A, 0x01, 0x00}, kSha256, {0x03, 0x03, 0x00, 0xBE, 0xEF}});
}
// An attribute of id-aca or of the given type.
Octets Attribute(const Octets& oid, const Octets& values) {
    return Tlv(0x30, {Tlv(0x06, oid), Tlv(0x31, values)});
}
Octets Aca(unsigned char arc) {
    return {0x2B, 0x06, 0x01, 0x05, 0x05, 0x07, 0x0A, arc};
}
Octets Extension(const Octets& oid, const Octets& value) {
    return Tlv(0x30, {Tlv(0x06, oid), Tlv(0x04, value)});
}

struct Parts {
    Octets holder = Tlv(0x30, IssuerSerial(0xA0, "Base"));
    Octets issuer = Tlv(0xA0, Tlv(0x30, Directory("Authority")));
    Octets attributes = Tlv(0x30, Octets());
    Octets extensions = Tlv(0x30, Octets());
};

Octets Certificate(const Parts& parts) {
    return Tlv(0x30, {Tlv(0x30, {{0x02, 0x01, 0x01},
                                 parts.holder,
                                 parts.issuer,
                                 kAlgorithm,
                                 {0x02, 0x01, 0x2A},
                                 kPeriod,
                                 parts.attributes,
                                 {0x03, 0x02, 0x00, 0x77},
                                 parts.extensions}),
                      kAlgorithm, kSignature});
}

Octets CertificateV1() {
    return Tlv(0x30, {Tlv(0x30, {Tlv(0xA1, Tlv(0x30, Directory("Subject"))),
                                 Tlv(0x30, Directory("Old")),
                                 kAlgorithm,
                                 {0x02, 0x01, 0x2A},
                                 kPeriod,
                                 Tlv(0x30, Octets())}),
                      kAlgorithm, kSignature});
}

ca::AttrCertInfo Describe(Octets der) {
    const Octets before = der;
    ca::AttrCertInfo record;
    ca::FillAttrCertInfo(der, record);
    EXPECT_EQ(before, der) << "describing changed the octets";
    return record;
}

using AttrCertInfoTest = EnglishTest;

TEST_F(AttrCertInfoTest, FillsTheKeysOfACertificate) {
    const ca::AttrCertInfo info = Describe(Certificate({}));
    EXPECT_EQ(40U, info.id.size());
    EXPECT_EQ(L"V2", info.version);
    EXPECT_EQ(L"2a", info.serial);
    EXPECT_EQ(L"ab", info.holderSerial);
    EXPECT_EQ(L"CN=Base", info.holderIssuer.readable);
    EXPECT_EQ(L"2.5.4.3=Base", info.holderIssuer.oid);
    EXPECT_EQ(L"CN=Base;", info.holderIssuer.tags);
    EXPECT_EQ(L"CN=Authority", info.issuer.readable);
    EXPECT_EQ(L"CN=Authority", info.issuer.x500);
    EXPECT_EQ(L"01.01.2024 00:00:00", info.validFrom.utc);
    EXPECT_EQ(ca::kErrNotVerified, info.validityNumber);
    EXPECT_EQ(L"SHA-256", info.hashAlg);
    EXPECT_EQ(L"77", info.issuerUniqueId);
    EXPECT_EQ(L"", info.error);
    const ca::AttrCertInfo old = Describe(CertificateV1());
    EXPECT_EQ(L"V1", old.version);
    EXPECT_EQ(L"CN=Subject", old.holderIssuer.readable);
    EXPECT_EQ(L"CN=Old", old.issuer.readable);
    EXPECT_EQ(L"", old.error);
}

TEST_F(AttrCertInfoTest, TakesEveryFormOfHolderAndIssuer) {
    struct Case {
        Octets holder;
        Octets issuer;
        const wchar_t* holderText;
        const wchar_t* holderSerial;
        const wchar_t* issuerText;
    };
    const Octets v2Name = Tlv(0xA0, Tlv(0x30, Directory("V2")));
    const Case cases[] = {
        {Tlv(0x30, Tlv(0xA1, Directory("Entity"))), v2Name, L"CN=Entity", L"", L"CN=V2"},
        {Tlv(0x30, Tlv(0xA1, Tlv(0x82, Text("a.example")))), v2Name, L"DNS: a.example", L"",
         L"CN=V2"},
        {Tlv(0x30, Digest(0xA2)), v2Name, L"SHA-256: beef", L"", L"CN=V2"},
        {Tlv(0x30, IssuerSerial(0xA0, "Base")), Tlv(0x30, Directory("V1")), L"CN=Base", L"ab",
         L"CN=V1"},
        {Tlv(0x30, IssuerSerial(0xA0, "Base")), Tlv(0xA0, IssuerSerial(0xA0, "By base")),
         L"CN=Base", L"ab", L"CN=By base"},
        {Tlv(0x30, IssuerSerial(0xA0, "Base")), Tlv(0xA0, Digest(0xA1)), L"CN=Base", L"ab",
         L"SHA-256: beef"},
    };
    for (const Case& c : cases) {
        const ca::AttrCertInfo info = Describe(Certificate({c.holder, c.issuer}));
        EXPECT_EQ(c.holderText, info.holderIssuer.readable);
        EXPECT_EQ(c.holderSerial, info.holderSerial);
        EXPECT_EQ(c.issuerText, info.issuer.readable);
        EXPECT_EQ(L"", info.error);
    }
}

TEST_F(AttrCertInfoTest, SaysTheAttributes) {
    const Octets uri = Tlv(0x86, Text("urn:x"));
    const Octets group = Tlv(0x30, {Tlv(0xA0, Directory("Policy")),
                                    Tlv(0x30, {Tlv(0x0C, Text("staff")), {0x04, 0x01, 0xFE}})});
    const Octets service = Tlv(0x30, {uri, Tlv(0x81, Text("a@b")), {0x04, 0x01, 0x5A}});
    const Octets role = Tlv(0x30, {Tlv(0xA0, Directory("Roles")), Tlv(0xA1, uri)});
    const Octets categories = Tlv(0x31, Tlv(0x30, {{0x80, 0x01, 0x2A}, {0xA1, 0x02, 0x05, 0x00}}));
    const Octets levels{0x03, 0x02, 0x00, 0x44};
    const Octets levelsTagged{0x81, 0x02, 0x00, 0x80};
    const auto tpm = [](unsigned char last) { return Octets{0x67, 0x81, 0x05, 0x02, last}; };
    const Octets version = Tlv(0x30, {{0x02, 1, 1}, {0x02, 1, 2}, {0x02, 1, 9}});
    struct Case {
        Octets attribute;
        const wchar_t* text;
    };
    const Case cases[] = {
        {Attribute(Aca(4), group), L"Policy authority: CN=Policy\nstaff\nfe"},
        {Attribute(Aca(1), service),
         L"Service: URI: urn:x\nIdentity: E-mail: a@b\nAuthentication data: 5a"},
        {Attribute({0x55, 0x04, 0x48}, role), L"CN=Roles: URI: urn:x"},
        {Attribute({0x55, 0x04, 0x48}, Tlv(0x30, Tlv(0xA1, uri))), L"URI: urn:x"},
        {Attribute({0x55, 0x04, 0x37}, Tlv(0x30, {{0x06, 0x01, 0x2A}, levels, categories})),
         L"Security policy: 1.2\nLevels: unclassified, top secret\nCategory: 1.2\n  NULL"},
        {Attribute({0x55, 0x04, 0x37}, Tlv(0x30, {{0x80, 0x01, 0x2A}, levelsTagged})),
         L"Security policy: 1.2\nLevels: unmarked"},
        {Attribute({0x55, 0x04, 0x37}, Tlv(0x30, {{0x06, 0x01, 0x2A}})),
         L"Security policy: 1.2\nLevels: unclassified"},
        {Attribute(tpm(16), Tlv(0x30, {Tlv(0x0C, Text("2.0")), {0x02, 1, 0}, {0x02, 2, 0, 0x8A}})),
         L"2.0, 0, 138"},
        {Attribute(tpm(17), Tlv(0x30, {version, {0x04, 4, 0, 0, 0, 1}})),
         L"Version: 1.2.9\nIdentifier: 00000001"},
        {Attribute(tpm(17), Tlv(0x30, {version, Tlv(0x0C, Text("PC"))})),
         L"Version: 1.2.9\nIdentifier: PC"},
        {Attribute(tpm(23), Tlv(0x30, version)), L"Version: 1.2.9"},
        {Attribute(tpm(23), version), L"Version: 1.2.9"},
        {Attribute(tpm(16), {}), L"Empty"},
        {Attribute({0x2A, 0x03, 0x04}, Join({Tlv(0x0C, Text("one")), Tlv(0x0C, Text("two"))})),
         L"UTF8 STRING: one\nUTF8 STRING: two"},
    };
    for (const Case& c : cases) {
        Parts parts;
        parts.attributes = Tlv(0x30, c.attribute);
        const ca::AttrCertInfo info = Describe(Certificate(parts));
        ASSERT_EQ(1U, info.attributes.items.size());
        EXPECT_EQ(c.text, info.attributes.items[0]->formattedData);
        EXPECT_EQ(L"", info.error);
    }
}

TEST_F(AttrCertInfoTest, SaysTheExtensions) {
    const Octets targets =
        Tlv(0x30, {Tlv(0xA0, Tlv(0x82, Text("host"))), Tlv(0xA1, Directory("Group")),
                   Tlv(0xA2, {IssuerSerial(0x30, "Ca"), Tlv(0x82, Text("x")), Digest(0x30)})});
    const Octets pe{0x2B, 0x06, 0x01, 0x05, 0x05, 0x07, 0x01};
    struct Case {
        Octets extension;
        const wchar_t* text;
    };
    const wchar_t* const targetText =
        L"Name: DNS: host\nGroup: CN=Group\nCertificate:\n  Issuer: CN=Ca\n  Serial: ab\n"
        L"  Name: DNS: x\n  SHA-256: beef";
    const Case cases[] = {
        {Extension({0x55, 0x1D, 0x37}, Tlv(0x30, targets)), targetText},
        {Extension({0x55, 0x1D, 0x37}, targets), targetText},
        {Extension({0x55, 0x1D, 0x38}, {0x05, 0x00}), L"Present"},
        {Extension(Join({pe, {0x04}}), {0x04, 0x02, 0xCA, 0xFE}), L"cafe"},
        {Extension(Join({pe, {0x06}}), Tlv(0x30, {{0x02, 0x01, 0x01},
                                                  Tlv(0xA0, Tlv(0x06, {0x2A, 0x03})),
                                                  {0x01, 0x01, 0x00}})),
         L"Path length: 1\nPermitted:\n  1.2.3\nAttributes not listed are permitted: no"},
    };
    for (const Case& c : cases) {
        Parts parts;
        parts.extensions = Tlv(0x30, c.extension);
        const ca::AttrCertInfo info = Describe(Certificate(parts));
        ASSERT_EQ(1U, info.extensions.items.size());
        EXPECT_EQ(c.text, info.extensions.items[0]->formattedData);
        EXPECT_EQ(L"", info.error);
    }
}

TEST_F(AttrCertInfoTest, SaysTheRestAroundABadAttribute) {
    Parts parts;
    parts.attributes = Tlv(0x30, {Attribute({0x55, 0x04, 0x48}, {0x02, 0x01, 0x05}),
                                  {0x04, 0x01, 0x01},
                                  Attribute({0x2A, 0x03}, Tlv(0x0C, Text("good"))),
                                  Attribute({0x2A, 0x03}, {0x05, 0x00})});
    const ca::AttrCertInfo info = Describe(Certificate(parts));
    ASSERT_EQ(4U, info.attributes.items.size());
    EXPECT_EQ(L"Unreadable value: INTEGER: 5", info.attributes.items[0]->formattedData);
    EXPECT_EQ(L"Unreadable value: OCTET STRING: 01", info.attributes.items[1]->formattedData);
    EXPECT_EQ(L"UTF8 STRING: good", info.attributes.items[2]->formattedData);
    for (const wchar_t* fault : {L"2.5.4.72", L"1.2.3: stands more than once"}) {
        EXPECT_NE(std::wstring::npos, info.error.find(fault)) << info.error.c_str();
    }
}

TEST_F(AttrCertInfoTest, TakesEveryCutAndEveryWrongOctet) {
    Parts parts;
    parts.attributes =
        Tlv(0x30, Attribute({0x55, 0x04, 0x48}, Tlv(0x30, Tlv(0xA1, kRegisteredRole))));
    for (const Octets& whole : {Certificate(parts), CertificateV1()}) {
        ASSERT_TRUE(ca::LooksLikeAttributeCertificate(whole));
        EXPECT_FALSE(ca::LooksLikeCrl(whole));
        for (std::size_t size = 0; size < whole.size(); ++size) {
            const Octets cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
            EXPECT_FALSE(ca::LooksLikeAttributeCertificate(cut));
            EXPECT_NE(L"", Describe(cut).error);
        }
        for (std::size_t i = 0; i < whole.size(); ++i) {
            for (const unsigned char wrong : Octets{0x00, 0x1F, 0x30, 0x7F, 0x80, 0x84, 0xFF}) {
                Octets der = whole;
                der[i] = wrong;
                Describe(der);
            }
        }
    }
}

}  // namespace
