#include "records/text/AlgorithmText.h"
#include "records/text/ExtensionText.h"
#include "tests/asn1/DerWriter.h"
#include "tests/common/EnglishTest.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using AlgorithmTextTest = EnglishTest;

CAsn1Element First(Octets& octets) {
    return ca::FirstElement(std::span(octets));
}

const Octets kUnnamedType = {0x2A, 0x03, 0x04};
const Octets kSha256 = {0x60, 0x86, 0x48, 0x01, 0x65, 0x03, 0x04, 0x02, 0x01};
const Octets kRsa = {0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x01, 0x01};
const Octets kPss = {0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x01, 0x0A};
const Octets kMgf1 = {0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 0x01, 0x01, 0x08};

Octets Algorithm(const Octets& type, const Octets& params = {}) {
    return Tlv(0x30, {Tlv(0x06, type), params});
}

TEST_F(AlgorithmTextTest, SignatureAlgorithmsTellTheirDigests) {
    const Octets sha256 = Algorithm(kSha256);
    const struct {
        const char* name;
        Octets algorithm;
        const wchar_t* text;
        const wchar_t* digest;
    } cases[] = {
        {"PSS",
         Algorithm(kPss, Tlv(0x30, {Tlv(0xA0, sha256), Tlv(0xA1, Algorithm(kMgf1, sha256)),
                                    Tlv(0xA2, {0x02, 0x01, 0x20})})),
         L"RSA-PSS, SHA-256, MGF1 SHA-256, 32", L"SHA-256"},
        {"PSS with defaults", Algorithm(kPss, {0x30, 0x00}), L"RSA-PSS, SHA-1, MGF1 SHA-1, 20",
         L"SHA-1"},
        {"Ed25519", Algorithm({0x2B, 0x65, 0x70}), L"Ed25519", L"SHA-512"},
        {"Ed448", Algorithm({0x2B, 0x65, 0x71}), L"Ed448", L"SHAKE256"},
        {"unknown", Algorithm(kUnnamedType), L"1.2.3.4", L""},
        {"no algorithm", {0x05, 0x00}, L"", L""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Octets octets = c.algorithm;
        const auto forms = ca::DescribeSignatureAlgorithm(First(octets));
        EXPECT_EQ(c.text, forms.text);
        EXPECT_EQ(c.digest, forms.digest);
    }
    Octets rsa = Algorithm(kRsa);
    Octets digest = sha256;
    EXPECT_EQ(L"RSA with SHA-256", ca::SignerAlgorithmText(First(rsa), First(digest)));
    EXPECT_EQ(L"RSA", ca::SignerAlgorithmText(First(rsa), {}));
}

Octets BitString(const Octets& bits) {
    return Tlv(0x03, {{0x00}, bits});
}

Octets Oid(const Octets& content) {
    return Tlv(0x06, content);
}

TEST_F(AlgorithmTextTest, PublicKeysTellTheirParameters) {
    const Octets ec = {0x2A, 0x86, 0x48, 0xCE, 0x3D, 0x02, 0x01};
    const Octets primeField = Oid({0x2A, 0x86, 0x48, 0xCE, 0x3D, 0x01, 0x01});
    const Octets gost = {0x2A, 0x85, 0x03, 0x07, 0x01, 0x01, 0x01, 0x01};
    const Octets paramSetA = Oid({0x2A, 0x85, 0x03, 0x07, 0x01, 0x02, 0x01, 0x01, 0x01});
    const Octets streebog = Oid({0x2A, 0x85, 0x03, 0x07, 0x01, 0x01, 0x02, 0x02});
    const Octets modulus = Join({{0x00, 0x80}, Octets(126, 0x11), {0x01}});
    const Octets rsaKey = Tlv(0x30, {Tlv(0x02, modulus), Tlv(0x02, {0x01, 0x00, 0x01})});
    const Octets prime = Tlv(0x02, Join({{0x00, 0xFF}, Octets(31, 0x22)}));
    const Octets element = Tlv(0x04, {0x01});
    const Octets explicitField = Tlv(0x30, {{0x02, 0x01, 0x01},
                                            Tlv(0x30, {primeField, prime}),
                                            Tlv(0x30, {element, element}),
                                            element,
                                            prime,
                                            {0x02, 0x01, 0x01}});
    const struct {
        const char* name;
        Octets algorithm;
        Octets bits;
        const wchar_t* text;  // algorithm | params | digests
    } cases[] = {
        {"RSA", Algorithm(kRsa, {0x05, 0x00}), rsaKey,
         L"RSA|1024 bit, exponent 65537|SHA-256, SHA-384, SHA-512"},
        {"P-384",
         Algorithm(ec, Oid({0x2B, 0x81, 0x04, 0x00, 0x22})),
         {0x04, 0x01},
         L"Elliptic curve public key|NIST P-384|SHA-384, SHA-512"},
        {"SM2",
         Algorithm(ec, Oid({0x2A, 0x81, 0x1C, 0xCF, 0x55, 0x01, 0x82, 0x2D})),
         {0x04, 0x01},
         L"SM2|SM2 curve (256 bit)|SM3"},
        {"explicit curve",
         Algorithm(ec, explicitField),
         {0x04, 0x01},
         L"Elliptic curve public key|explicit parameters, 256 bit|SHA-256, SHA-384, SHA-512"},
        {"GOST", Algorithm(gost, Tlv(0x30, {paramSetA, streebog})), Tlv(0x04, {0xAB, 0xCD}),
         L"GOST R 34.10-2012 256 bit|GOST R 34.10-2012 curve A (256 bit)\nGOST R 34.11-2012 256 "
         L"bit|GOST R 34.11-2012 256 bit"},
        {"unknown", Algorithm(kUnnamedType), {0x01}, L"1.2.3.4||"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Octets info = Tlv(0x30, {c.algorithm, BitString(c.bits)});
        const Octets before = info;
        const ca::PublicKeyForms forms = ca::DescribePublicKey(First(info));
        EXPECT_EQ(c.text, forms.algorithm + L'|' + forms.params + L'|' + forms.hashAlgs);
        EXPECT_EQ(L"", forms.error);
        EXPECT_EQ(before, info);
    }
}

TEST_F(AlgorithmTextTest, KeyUsageIsWhatTheBitStringCounts) {
    const Octets octets = {0x07, 0xFF};
    EXPECT_EQ(0x8007U, ca::KeyUsageOf({octets, 7}));
    EXPECT_EQ(0x06U, ca::KeyUsageOf({std::span(octets).first(1), 1}));
    EXPECT_EQ(0U, ca::KeyUsageOf({{}, 7}));
}

}  // namespace
