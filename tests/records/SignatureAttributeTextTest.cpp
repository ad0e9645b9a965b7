#include "asn1/OidTable.h"
#include "common/Encode.h"
#include "common/Lng.h"
#include "records/text/AttributeText.h"
#include "records/text/Decoded.h"
#include "tests/asn1/DerWriter.h"
#include "tests/common/TemporaryDir.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>

namespace {

const Octets& kSha256 = kSha256Algorithm;
const Octets kSha512 = Algorithm("2.16.840.1.101.3.4.2.3");
const Octets kRsa = Algorithm("1.2.840.113549.1.1.1");
const Octets kHash = Tlv(0x04, {0xBE, 0xEF});
const Octets kPolicy = {0x06, 0x02, 0x2A, 0x03};
const Octets kTime = Tlv(0x18, Text("20260203040506Z"));
const Octets kEmpty = Tlv(0x30, Octets());

Octets IssuerSerial(const char* issuer) {
    return Tlv(0x30, {Tlv(0x30, Tlv(0xA4, Name(issuer))), {0x02, 2, 0x00, 0xAB}});
}
// An identifier below 1.2.840.113549.1.9.
Octets Pkcs9(const Octets& arcs) {
    return Tlv(0x06, {{0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 1, 9}, arcs});
}
Octets Signer(const Octets& id, const Octets& signedAttributes) {
    return Tlv(0x30, {{2, 1, 1}, id, kSha256, signedAttributes, kRsa, kHash});
}
// A message about `content`; its certificates are counted only.
Octets Message(const Octets& type, const Octets& content, const Octets& signers) {
    const Octets encapsulated = Tlv(0x30, {type, Tlv(0xA0, Tlv(0x04, content))});
    const Octets signedData =
        Tlv(0x30, {{2, 1, 3}, {0x31, 0}, encapsulated, Tlv(0xA0, kEmpty), Tlv(0x31, signers)});
    return Tlv(0x30, {Oid("1.2.840.113549.1.7.2"), Tlv(0xA0, signedData)});
}
Octets Token() {
    const Octets info = Tlv(0x30, {{2, 1, 1},
                                   kPolicy,
                                   Tlv(0x30, {kSha512, kHash}),
                                   {2, 2, 0x00, 0x99},
                                   kTime,
                                   Tlv(0x30, {{2, 1, 1}, {0x80, 2, 0x01, 0xF4}, {0x81, 1, 100}}),
                                   {1, 1, 0xFF},
                                   {2, 1, 0x0D},
                                   Tlv(0xA0, Tlv(0xA4, Name("Stamps")))});
    const Octets signingTime = Tlv(0x30, {Pkcs9({5}), Tlv(0x31, Tlv(0x17, Text("260203040507Z")))});
    return Message(Pkcs9({0x10, 1, 4}), info,
                   Signer(Tlv(0x30, {Name("CA"), {2, 1, 7}}), Tlv(0xA0, signingTime)));
}
Octets Claimed(const Octets& attributes) {
    return Tlv(0x30, Tlv(0xA0, Tlv(0x30, attributes)));
}
// A claim that is itself an attribute of claims, and so on; of indefinite lengths, so that each
// level only adds octets in front.
Octets NestedClaims(int depth) {
    const Octets level = {0x30, 0x80, 0xA0, 0x80, 0x30, 0x80, 0x30, 0x80, 0x06, 11,   0x2A, 0x86,
                          0x48, 0x86, 0xF7, 0x0D, 0x01, 0x09, 0x10, 0x02, 0x12, 0x31, 0x80};
    Octets claims;
    for (int i = 0; i < depth; ++i) {
        claims.insert(claims.end(), level.begin(), level.end());
    }
    claims.resize(claims.size() + 10 * static_cast<std::size_t>(depth));
    return claims;
}

class SignatureAttributeTextTest : public testing::Test {
  protected:
    SignatureAttributeTextTest() {
        SetZORNALng(L"en");
        tzset();
    }
    ~SignatureAttributeTextTest() override { SetZORNALng(L"ru"); }
    SignatureAttributeTextTest(const SignatureAttributeTextTest&) = delete;
    SignatureAttributeTextTest& operator=(const SignatureAttributeTextTest&) = delete;

    // The text of an attribute of one value; `error` gets what was wrong with it.
    static std::wstring Say(const char* shortName, const Octets& value, std::wstring& error) {
        const ca::OidInfo* info = ca::FindOidByShortName(shortName);
        EXPECT_NE(nullptr, info) << shortName;
        const Octets oid = Oid(ca::u16u8(info->dotted).c_str());
        Octets set = Tlv(0x31, value);
        const Octets before = set;
        const ca::CDecoded<CAsn1SetOf<CAsn1Any>> values(set);
        ca::CTextLines lines;
        ca::SayAttributeValues(std::span(oid).subspan(2), *values, lines, error);
        EXPECT_EQ(before, set) << "describing changed the octets";
        return lines.Take();
    }

  private:
    struct ZoneReset {
        ~ZoneReset() { tzset(); }
    };
    ZoneReset m_reset;  // once the variable is as it was
    ScopedVariable m_zone{"TZ", "UTC"};
};

TEST_F(SignatureAttributeTextTest, SaysEachTypeInLines) {
    const std::wstring token =
        L"Time: 03.02.2026 04:05:06 (03.02.2026 04:05:06 UTC)\nPolicy: 1.2.3\nSerial: 99\n"
        L"SHA-512: beef\nAccuracy: 1.5001 s\nOrdered: yes\nNonce: 0d\nAuthority: CN=Stamps\n"
        L"Signer:\n  Issuer: CN=CA\n  Serial: 07\n  Signature algorithm: RSA with SHA-256\n"
        L"  Time: 03.02.2026 04:05:07 (03.02.2026 04:05:07 UTC)\nCertificates: 1";
    const Octets reference = Tlv(0x30, {Tlv(0x30, {kSha256, kHash}), IssuerSerial("CA")});
    const Octets crlReference =
        Tlv(0x30, {kHash, Tlv(0x30, {Name("CA"), Tlv(0x17, Text("260203040506Z")), {2, 1, 5}})});
    const Octets ocspReference = Tlv(0x30, Tlv(0x30, {Tlv(0xA2, kHash), kTime}));
    const Octets archiveStamp = Tlv(0x30, {Tlv(0xA2, Tlv(0x30, kHash)), Message(kPolicy, {}, {})});
    const Octets evidence =
        Tlv(0x30, {{2, 1, 1}, Tlv(0x30, kSha256), Tlv(0x30, Tlv(0x30, archiveStamp))});
    const Octets role = Tlv(0x30, {{0x06, 3, 0x55, 4, 12}, Tlv(0x31, Tlv(0x0C, Text("Clerk")))});
    const struct {
        const char* shortName;
        Octets value;
        std::wstring text;
    } cases[] = {
        {"id-contentType", kPolicy, L"1.2.3"},
        {"id-messageDigest", Tlv(0x24, {kHash, kHash}), L"beefbeef"},
        {"id-signingTime", kTime, L"03.02.2026 04:05:06 (03.02.2026 04:05:06 UTC)"},
        {"id-aa-binarySigningTime", {2, 1, 60}, L"01.01.1970 00:01:00 (01.01.1970 00:01:00 UTC)"},
        {"id-aa-timeStampToken", Token(), token},
        {"spcRfc3161", Token(), token},
        {"id-aa-er-internal", evidence,
         L"Digest algorithm: SHA-256\nStamp:\n  Content: 1.2.3\n  Certificates: 1"},
        {"spcNestedSignature", Message(kPolicy, {}, {}), L"Content: 1.2.3\nCertificates: 1"},
        {"id-countersignature", Signer(Tlv(0x80, {0xC0}), {}),
         L"Signer:\n  Key: c0\n  Signature algorithm: RSA with SHA-256"},
        {"id-aa-signingCertificate",
         Tlv(0x30,
             {Tlv(0x30, Tlv(0x30, {kHash, IssuerSerial("CA")})), Tlv(0x30, Tlv(0x30, kPolicy))}),
         L"SHA-1: beef\n  Issuer: CN=CA\n  Serial: ab\nPolicy:\n  1.2.3"},
        {"id-aa-signingCertificateV2",
         Tlv(0x30, Tlv(0x30, {Tlv(0x30, kHash), Tlv(0x30, {kSha512, kHash})})),
         L"SHA-256: beef\nSHA-512: beef"},
        {"id-aa-ets-otherSigCert", Tlv(0x30, Tlv(0x30, reference)),
         L"SHA-256: beef\n  Issuer: CN=CA\n  Serial: ab"},
        {"id-aa-ets-sigPolicyId", {5, 0}, L"Policy follows from what is signed"},
        {"id-aa-ets-sigPolicyId",
         Tlv(0x30, {kPolicy, Tlv(0x30, {kSha256, kHash}),
                    Tlv(0x30, Tlv(0x30, {Pkcs9({0x10, 5, 1}), Tlv(0x16, Text("http://a"))}))}),
         L"Policy: 1.2.3\nSHA-256: beef\nAddress: http://a"},
        {"id-aa-ets-sigPolicyId",
         Tlv(0x30,
             {kPolicy, Tlv(0x30, Tlv(0x30, {Pkcs9({0x10, 5, 1}), Tlv(0x16, Text("http://a"))}))}),
         L"Policy: 1.2.3\nAddress: http://a"},
        {"id-aa-ets-sigPolicyId", Tlv(0x30, {kPolicy, Tlv(0x30, {kSha256, kHash}), {5, 0}}),
         L"Unreadable value:\n  SEQUENCE\n    OBJECT IDENTIFIER: 1.2.3\n    SEQUENCE\n"
         L"      SEQUENCE\n        OBJECT IDENTIFIER: SHA-256 (2.16.840.1.101.3.4.2.1)\n"
         L"      OCTET STRING: beef\n    NULL"},
        {"id-aa-ets-commitmentType", Tlv(0x30, Pkcs9({0x10, 6, 1})),
         L"Proof of origin (1.2.840.113549.1.9.16.6.1)"},
        {"id-aa-ets-signerLocation",
         Tlv(0x30, {Tlv(0xA0, Tlv(0x13, Text("RU"))),
                    Tlv(0xA2, Tlv(0x30, {Tlv(0x0C, Text("Row 1")), Tlv(0x0C, Text("Row 2"))}))}),
         L"Country: RU\nPostal address:\n  Row 1\n  Row 2"},
        {"id-aa-ets-signerLocation", Tlv(0x30, Tlv(0xA2, Tlv(0x0C, Text("Row 1")))),
         L"Postal address:\n  Row 1"},
        {"id-aa-ets-signerAttr", Claimed(role),
         L"Claimed attributes:\n  Title (2.5.4.12):\n    Clerk"},
        {"id-aa-ets-signerAttr",
         Claimed(Tlv(0x30, {{0x06, 3, 0x55, 4, 72}, Tlv(0x31, Tlv(0x0C, Text("Clerk")))})),
         L"Claimed attributes:\n  Role (2.5.4.72):\n    Clerk"},
        {"id-aa-ets-signerAttrV2", Claimed(role),
         L"Claimed attributes:\n  Title (2.5.4.12):\n    Clerk"},
        {"id-aa-ets-certificateRefs", Tlv(0x30, {reference, reference}),
         L"Certificates: 2\n  SHA-256: beef, CN=CA, ab\n  SHA-256: beef, CN=CA, ab"},
        {"id-aa-ets-revocationRefs",
         Tlv(0x30, Tlv(0x30, {Tlv(0xA0, Tlv(0x30, Tlv(0x30, crlReference))),
                              Tlv(0xA1, Tlv(0x30, Tlv(0x30, ocspReference)))})),
         L"CRLs: 1\n  SHA-1: beef, CN=CA, 03.02.2026 04:05:06 (03.02.2026 04:05:06 UTC), 05\n"
         L"OCSP responses: 1\n  Key: beef, 03.02.2026 04:05:06 (03.02.2026 04:05:06 UTC)"},
        {"id-aa-ets-certValues", Tlv(0x30, kEmpty),
         L"Certificates: 1\n  Unreadable value: SEQUENCE"},
        {"adobeRevocationInfoArchival", Tlv(0x30, Tlv(0xA0, Tlv(0x30, kEmpty))),
         L"CRLs: 1\n  Unreadable value: SEQUENCE"},
        {"id-aa-ATSHashIndex-v3",
         Tlv(0x30, {kSha512, Tlv(0x30, kHash), kEmpty, Tlv(0x30, {kHash, kHash})}),
         L"Digest algorithm: SHA-512\nCertificates: 1\n  beef\nCRLs: 0\n"
         L"Unsigned attributes: 2\n  beef\n  beef"},
        {"smimeCapabilities",
         Tlv(0x30, {Tlv(0x30, {{0x06, 8, 0x2A, 0x86, 0x48, 0x86, 0xF7, 0x0D, 3, 2}, {2, 1, 40}}),
                    Tlv(0x30, kPolicy)}),
         L"RC2 (CBC) (1.2.840.113549.3.2), 40\n1.2.3"},
        {"id-aa-encrypKeyPref", Tlv(0xA0, {Name("CA"), {2, 1, 7}}), L"Issuer: CN=CA\nSerial: 07"},
        {"id-aa-encrypKeyPref", Tlv(0x82, {0x0F}), L"Key: 0f"},
        {"id-aa-CMSAlgorithmProtection",
         Tlv(0x30, {kSha256, Tlv(0xA1, Octets(kRsa.begin() + 2, kRsa.end()))}),
         L"Digest algorithm: SHA-256\nSignature algorithm: RSA"},
        {"id-aa-securityLabel", Tlv(0x31, {kPolicy, {2, 1, 4}, Tlv(0x13, Text("EYES ONLY"))}),
         L"Security policy: 1.2.3\nClassification: secret\nPrivacy mark: EYES ONLY"},
        {"id-aa-receiptRequest",
         Tlv(0x30, {kHash, {0x80, 1, 0}, Tlv(0x30, Tlv(0x30, Tlv(0x81, Text("a@b"))))}),
         L"Identity: beef\nReceipts from: all recipients\nReceipts to: E-mail: a@b"},
        {"id-aa-contentHint", Tlv(0x30, {Tlv(0x0C, Text("Note")), kPolicy}),
         L"Description: Note\nContent: 1.2.3"},
        {"spcSpOpusInfo",
         Tlv(0x30,
             {Tlv(0xA0, Tlv(0x80, {0, 'A', 0, 'b'})), Tlv(0xA1, Tlv(0x80, Text("http://a")))}),
         L"Name: Ab\nAddress: http://a"},
        {"scepMessageType", Tlv(0x13, Text("19")), L"19"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.shortName);
        std::wstring error;
        EXPECT_EQ(c.text, Say(c.shortName, c.value, error));
        EXPECT_EQ(c.text.find(L"Unreadable") == std::wstring::npos, error.empty()) << error;
    }
}

TEST_F(SignatureAttributeTextTest, SaysWhatIsNotOfItsType) {
    for (const char* shortName :
         {"id-signingTime", "id-aa-timeStampToken", "id-aa-signingCertificateV2",
          "id-aa-ets-sigPolicyId", "id-aa-ets-signerAttr", "id-aa-ets-revocationValues",
          "smimeCapabilities", "id-aa-encrypKeyPref", "id-aa-ATSHashIndex", "spcSpOpusInfo"}) {
        SCOPED_TRACE(shortName);
        std::wstring error;
        EXPECT_EQ(L"Unreadable value: BOOLEAN: FALSE", Say(shortName, {1, 1, 0}, error));
        EXPECT_NE(L"", error);
    }
}

TEST_F(SignatureAttributeTextTest, BoundsWhatNestsAndWhatIsLong) {
    std::wstring error;
    EXPECT_LT(Say("id-aa-ets-signerAttr", NestedClaims(20000), error).size(), 100000U);
    Octets references;
    const Octets reference = Tlv(0x30, kHash);
    for (int i = 0; i < 3000; ++i) {
        references.insert(references.end(), reference.begin(), reference.end());
    }
    const std::wstring text = Say("id-aa-ets-certificateRefs", Tlv(0x30, references), error);
    EXPECT_TRUE(text.starts_with(L"Certificates: 3000\n"));
    EXPECT_TRUE(text.ends_with(L"\n  \u2026 and 2000 more")) << text.size();
    EXPECT_TRUE(error.ends_with(L"(1.2.840.113549.1.9.16.2.21): \u2026 and 2000 more")) << error;
}

}  // namespace
