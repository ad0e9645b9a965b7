#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Typed.h"
#include "records/text/ParametersText.h"
#include "tests/asn1/DerWriter.h"
#include "tests/common/EnglishTest.h"

#include <gtest/gtest.h>

namespace {

using ParametersTextTest = EnglishTest;

const Octets kPkcs = {0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01};
const Octets kGost = {0x2A, 0x85, 0x03, 0x02, 0x02};
const Octets kTc26 = {0x2A, 0x85, 0x03, 0x07, 0x01};
const Octets kNull = {0x05, 0x00};
const Octets kSalt = Tlv(0x04, Text("salt"));
const Octets kCount = {0x02, 0x02, 0x08, 0x00};

Octets Oid(const Octets& root, const Octets& arcs) {
    return Tlv(0x06, {root, arcs});
}
Octets Algorithm(const Octets& oid, const Octets& params = {}) {
    return Tlv(0x30, {oid, params});
}

const Octets kSha256 = Algorithm(Tlv(0x06, {0x60, 0x86, 0x48, 0x01, 0x65, 0x03, 0x04, 0x02, 0x01}));
const Octets kAes256 = Algorithm(Tlv(0x06, {0x60, 0x86, 0x48, 0x01, 0x65, 0x03, 0x04, 0x01, 0x2A}),
                                 Tlv(0x04, Octets(16, 1)));
const Octets kMgf1 = Oid(kPkcs, {0x01, 0x08});
const Octets kPwriKek = Oid(kPkcs, {0x09, 0x10, 0x03, 0x09});
const Octets kHmacSha256 = Algorithm({0x06, 0x08, 0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x02, 0x09});
const Octets kPbkdf2 = Algorithm(Oid(kPkcs, {0x05, 0x0C}), Tlv(0x30, {kSalt, kCount, kHmacSha256}));
const Octets kRc2 = {0x06, 0x08, 0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x03, 0x02};
const Octets kSetA = Oid(kGost, {0x1F, 0x01});
const Octets kGostWrap = Algorithm(Oid(kGost, {0x0D, 0x01}), Tlv(0x30, {kSetA, kSalt}));

TEST_F(ParametersTextTest, SaysTheParametersOfEachAlgorithm) {
    const Octets curveA = Oid(kTc26, {0x02, 0x01, 0x01, 0x01});
    const Octets streebog = Oid(kTc26, {0x01, 0x02, 0x02});
    const Octets gostKey = Oid(kTc26, {0x01, 0x01, 0x01});
    const struct {
        const char* name;
        Octets algorithm;
        const wchar_t* text;
    } cases[] = {
        {"OAEP",
         Algorithm(Oid(kPkcs, {0x01, 0x07}),
                   Tlv(0x30, {Tlv(0xA0, kSha256), Tlv(0xA1, Algorithm(kMgf1, kSha256))})),
         L"SHA-256, MGF1 SHA-256"},
        {"OAEP with a mask of its own",
         Algorithm(Oid(kPkcs, {0x01, 0x07}), Tlv(0x30, Tlv(0xA1, kSha256))), L"SHA-1, SHA-256"},
        {"PKCS #12", Algorithm(Oid(kPkcs, {0x0C, 0x01, 0x03}), Tlv(0x30, {kSalt, kCount})),
         L"2048"},
        {"PBKDF2", kPbkdf2, L"HMAC with SHA-256, 2048"},
        {"PBKDF2 of defaults", Algorithm(Oid(kPkcs, {0x05, 0x0C}), Tlv(0x30, {kSalt, kCount})),
         L"HMAC with SHA-1, 2048"},
        {"scrypt",
         Algorithm({0x06, 0x09, 0x2B, 0x06, 0x01, 0x04, 0x01, 0xDA, 0x47, 0x04, 0x0B},
                   Tlv(0x30, {kSalt, kCount, {0x02, 0x01, 0x08}, {0x02, 0x01, 0x01}})),
         L"2048, 8, 1"},
        {"PBES2", Algorithm(Oid(kPkcs, {0x05, 0x0D}), Tlv(0x30, {kPbkdf2, kAes256})),
         L"Password-based key derivation PBKDF2, HMAC with SHA-256, 2048, AES-256 (CBC)"},
        {"PBMAC1", Algorithm(Oid(kPkcs, {0x05, 0x0E}), Tlv(0x30, {kPbkdf2, kHmacSha256})),
         L"Password-based key derivation PBKDF2, HMAC with SHA-256, 2048, HMAC with SHA-256"},
        {"key wrap on a password", Algorithm(kPwriKek, kAes256), L"AES-256 (CBC)"},
        {"RC2", Algorithm(kRc2, Tlv(0x30, {{0x02, 0x01, 0x3A}, kSalt})), L"128 bit"},
        {"RC2 without a version", Algorithm(kRc2, Tlv(0x30, kSalt)), L"32 bit"},
        {"RC2 of a large key", Algorithm(kRc2, Tlv(0x30, {{0x02, 0x02, 0x01, 0x00}, kSalt})),
         L"256 bit"},
        {"GOST key", Algorithm(gostKey, Tlv(0x30, {curveA, streebog, kSetA})),
         L"GOST R 34.10-2012 curve A (256 bit), GOST R 34.11-2012 256 bit, GOST 28147-89 parameter "
         L"set A"},
        {"GOST key that means an agreement", Algorithm(gostKey, kGostWrap),
         L"GOST 28147-89 key wrap with diversification, GOST 28147-89 parameter set A"},
        {"GOST agreement", Algorithm(Oid(kGost, {0x60}), kGostWrap),
         L"GOST 28147-89 key wrap with diversification, GOST 28147-89 parameter set A"},
        {"GOST cipher", Algorithm(Oid(kGost, {0x15}), Tlv(0x30, {kSalt, kSetA})),
         L"GOST 28147-89 parameter set A"},
        {"none", Algorithm(gostKey), L""},
        {"NULL", Algorithm(gostKey, kNull), L""},
        {"unknown", Algorithm({0x06, 0x02, 0x2A, 0x03}, kSha256), L""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const ca::ParametersForms forms = ca::DescribeParameters(ca::FirstElement(c.algorithm));
        EXPECT_EQ(c.text, forms.text);
        EXPECT_EQ(L"", forms.error);
    }
    const Octets unknown = Algorithm({0x06, 0x02, 0x2A, 0x03}, kSha256);
    EXPECT_EQ(L"SHA-256", ca::DescribeInnerAlgorithm(ca::FirstElement(unknown)).text);
}

TEST_F(ParametersTextTest, ShowsWhatItCannotRead) {
    const Octets pss =
        Algorithm(Oid(kPkcs, {0x01, 0x0A}), Tlv(0x30, {Tlv(0xA2, {0x02, 0x01, 0x20}), kNull}));
    const ca::ParametersForms forms = ca::DescribeParameters(ca::FirstElement(pss));
    EXPECT_EQ(L"Unreadable value: 3007a2030201200500", forms.text);
    EXPECT_EQ(L"RSASSA-PSS-params: unexpected element, tag 05, offset 7", forms.error);
    const Octets inner = Algorithm(
        Oid(kPkcs, {0x05, 0x0D}), Tlv(0x30, {Algorithm(Oid(kPkcs, {0x05, 0x0C}), kSalt), kAes256}));
    EXPECT_EQ(
        L"Password-based key derivation PBKDF2, Unreadable value: 040473616c74, AES-256 (CBC)",
        ca::DescribeParameters(ca::FirstElement(inner)).text);
}

TEST_F(ParametersTextTest, BoundsAlgorithmsInsideAlgorithms) {
    Octets algorithm = kAes256;
    for (int depth = 0; depth < 1000; ++depth) {
        algorithm = Algorithm(kPwriKek, algorithm);
    }
    constexpr const wchar_t* kWrap = L"Password-based key wrap";
    std::wstring nested = kWrap;
    for (int depth = 1; depth < 4; ++depth) {
        nested += std::wstring(L", ") + kWrap;
    }
    EXPECT_EQ(nested, ca::DescribeParameters(ca::FirstElement(std::span(algorithm))).text);
}

TEST_F(ParametersTextTest, TellsTheSetOfAKeyTransportedForGost) {
    const Octets gostKey = Algorithm(Oid(kTc26, {0x01, 0x01, 0x01}));
    Octets key = Tlv(0x04, Tlv(0x30, {Tlv(0x30, {kSalt, kSalt}), Tlv(0xA0, {kSetA, kSalt})}));
    const CAsn1Root<CAsn1OctetString> transported(key);
    EXPECT_EQ(L"GOST 28147-89 parameter set A",
              ca::GostTransportText(ca::FirstElement(gostKey), *transported));
    EXPECT_EQ(L"", ca::GostTransportText(ca::FirstElement(kAes256), *transported));
    Octets other = kSalt;
    EXPECT_EQ(
        L"", ca::GostTransportText(ca::FirstElement(gostKey), *CAsn1Root<CAsn1OctetString>(other)));
}

}  // namespace
