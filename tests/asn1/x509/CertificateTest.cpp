#include "asn1/OidTable.h"
#include "asn1/x509/Certificate.h"
#include "asn1/x509/GeneralName.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "tests/asn1/DerWriter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

const Octets kSubjectAltName = Oid("2.5.29.17");
const Octets kRsaWithSha256 = Algorithm("1.2.840.113549.1.1.11", kDerNull);

// Every form of GeneralName (RFC 5280, 4.2.1.6), in the order of their tags.
Octets AllGeneralNames() {
    const Octets personal = Tlv(0xA5, {Tlv(0x80, Text("Ivanov")), Tlv(0x81, Text("Ivan"))});
    const Octets standard =
        Tlv(0x30, {Tlv(0x61, Tlv(0x13, Text("RU"))), Tlv(0x62, Tlv(0x12, Text("7"))),
                   Tlv(0x80, Text("1234")), Tlv(0x83, Text("Org")), personal,
                   Tlv(0xA6, {Tlv(0x13, Text("Unit 1")), Tlv(0x13, Text("Unit 2"))})});
    const Octets domain = Tlv(0x30, Tlv(0x30, {Tlv(0x13, Text("type")), Tlv(0x13, Text("value"))}));
    const Octets extension =
        Tlv(0x31, Tlv(0x30, {Tlv(0x80, {0x01}), Tlv(0xA1, Tlv(0x13, Text("cn")))}));
    return Tlv(
        0x30,
        {Tlv(0xA0, {{0x06, 0x02, 0x2A, 0x03}, Tlv(0xA0, Tlv(0x0C, Text("other")))}),
         Tlv(0x81, Text("a@b.example")), Tlv(0x82, Text("b.example")),
         Tlv(0xA3, {standard, domain, extension}), Tlv(0xA4, Name("directory")),
         Tlv(0xA5, {Tlv(0xA0, Tlv(0x0C, Text("assigner"))), Tlv(0xA1, Tlv(0x13, Text("party")))}),
         Tlv(0x86, Text("http://b.example/")), Tlv(0x87, {192, 0, 2, 1}),
         Tlv(0x88, {0x2A, 0x03, 0x04})});
}

Octets TbsCertificate() {
    const Octets key = Tlv(0x30, {kRsaWithSha256, Tlv(0x03, {0x00, 0x01, 0x02})});
    const Octets extension =
        Tlv(0x30, {kSubjectAltName, {0x01, 0x01, 0xFF}, Tlv(0x04, AllGeneralNames())});
    return Tlv(0x30,
               {Tlv(0xA0, {0x02, 0x01, 0x02}),
                {0x02, 0x02, 0x00, 0xFF},
                kRsaWithSha256,
                Name("Issuer"),
                Tlv(0x30, {Tlv(0x17, Text("500101000000Z")), Tlv(0x18, Text("99991231235959Z"))}),
                Name("Subject"),
                key,
                Tlv(0x81, {0x05, 0xFF}),
                Tlv(0x82, {0x00, 0x22}),
                Tlv(0xA3, Tlv(0x30, {extension, extension}))});
}

Octets Certificate() {
    return Tlv(0x30, {TbsCertificate(), kRsaWithSha256, Tlv(0x03, {0x03, 0xAB, 0xCF})});
}

std::string TextOf(const CAsn1Object* object) {
    const auto octets = OctetsOf(object);
    return {octets.begin(), octets.end()};
}

std::string FirstValue(const CAsn1Name& name) {
    auto rdns = name.Elements();
    if (!rdns.Next() || rdns.Item() == nullptr) {
        return "no RDN";
    }
    auto attributes = rdns.Item()->Elements();
    if (!attributes.Next() || attributes.Item() == nullptr) {
        return "no attribute";
    }
    const ca::OidInfo* type = ca::FindOid(OctetsOf(attributes.Item()->Type()));
    return (type != nullptr ? type->shortName : "?") + ("=" + TextOf(attributes.Item()->Value()));
}

class CertificateTest : public testing::TestWithParam<Asn1Blocks> {};

TEST_P(CertificateTest, ReadsEveryMember) {
    Octets der = Certificate();
    const Octets before = der;
    CAsn1Root<CAsn1Certificate> certificate(der, GetParam());
    certificate->Decode();
    const CAsn1TbsCertificate& tbs = *certificate->TbsCertificate();
    EXPECT_EQ(TbsCertificate(), Octets(tbs.Raw().begin(), tbs.Raw().end()));
    EXPECT_EQ(2, IntegerOf(tbs.Version(), 0));
    EXPECT_EQ(255, IntegerOf(tbs.SerialNumber(), 0));
    EXPECT_EQ(ca::OidKind::kSignature, ca::FindOid(OctetsOf(tbs.Signature()->Algorithm()))->kind);
    EXPECT_EQ(kAsn1Null, tbs.Signature()->Parameters()->Tag());
    EXPECT_EQ("CN=Issuer", FirstValue(*tbs.Issuer()));
    EXPECT_EQ("500101000000Z", TextOf(tbs.Validity()->NotBefore()));
    EXPECT_EQ(kAsn1GeneralizedTime, tbs.Validity()->NotAfter()->GetBlock()->tag);
    EXPECT_EQ("CN=Subject", FirstValue(*tbs.Subject()));
    EXPECT_EQ(2U, BitsOf(tbs.SubjectPublicKeyInfo()->SubjectPublicKey()).octets.size());
    EXPECT_EQ(5U, BitsOf(tbs.IssuerUniqueId()).unused);
    EXPECT_EQ(0x22, BitsOf(tbs.SubjectUniqueId()).octets[0]);
    EXPECT_EQ(2U, tbs.Extensions()->Count());
    EXPECT_EQ(3U, BitsOf(certificate->SignatureValue()).unused);
    EXPECT_EQ(before, der) << "reading changed the octets";
}

TEST_P(CertificateTest, ReadsEveryFormOfGeneralName) {
    Octets der = AllGeneralNames();
    CAsn1Root<CAsn1GeneralNames> names(der, GetParam());
    ASSERT_EQ(9U, names->Count());
    auto at = names->Elements();
    const auto next = [&at]() -> const CAsn1GeneralName& {
        EXPECT_TRUE(at.Next());
        EXPECT_EQ(nullptr, at.Fault());
        return *at.Item();
    };
    EXPECT_EQ("other", TextOf(next().OtherName()->Value()));
    EXPECT_EQ("a@b.example", TextOf(next().Rfc822Name()));
    EXPECT_EQ("b.example", TextOf(next().DnsName()));
    const CAsn1OrAddress& address = *next().X400Address();
    EXPECT_EQ("RU", TextOf(address.StandardAttributes()->CountryName()->Value()->Printable()));
    EXPECT_EQ("7",
              TextOf(address.StandardAttributes()->AdministrationDomainName()->Value()->Numeric()));
    EXPECT_EQ("1234", TextOf(address.StandardAttributes()->NetworkAddress()));
    EXPECT_EQ("Org", TextOf(address.StandardAttributes()->OrganizationName()));
    EXPECT_EQ("Ivan", TextOf(address.StandardAttributes()->PersonalName()->GivenName()));
    EXPECT_EQ(2U, address.StandardAttributes()->OrganizationalUnitNames()->Count());
    EXPECT_EQ(1U, address.DomainDefinedAttributes()->Count());
    auto attributes = address.ExtensionAttributes()->Elements();
    ASSERT_TRUE(attributes.Next());
    EXPECT_EQ(1, IntegerOf(attributes.Item()->Type(), 0));
    EXPECT_EQ("cn", TextOf(attributes.Item()->Value()));
    EXPECT_EQ("CN=directory", FirstValue(*next().DirectoryName()));
    const CAsn1EdiPartyName& party = *next().EdiPartyName();
    EXPECT_EQ("assigner", TextOf(party.NameAssigner()));
    EXPECT_EQ("party", TextOf(party.PartyName()));
    EXPECT_EQ("http://b.example/", TextOf(next().Uri()));
    EXPECT_EQ(4U, OctetsOf(next().IpAddress()).size());
    EXPECT_EQ(L"1.2.3.4", ca::OidText(OctetsOf(next().RegisteredId())));
    EXPECT_FALSE(at.Next());
}

TEST_P(CertificateTest, OneOddMemberHidesNoOther) {
    const Octets good = Certificate();
    Octets der = good;
    const Octets time = Tlv(0x17, Text("500101000000Z"));
    const auto found = std::search(der.begin(), der.end(), time.begin(), time.end());
    *found = 0x04;  // notBefore is no time
    CAsn1Root<CAsn1Certificate> certificate(der, GetParam());
    try {
        certificate->Decode();
        ADD_FAILURE() << "no fault";
    } catch (const ca::Exception& fault) {
        EXPECT_EQ(ca::kErrAsn1BadTag, fault.errorCode);
        EXPECT_TRUE(fault.message.starts_with(L"Validity.notBefore: "));
    }
    const CAsn1TbsCertificate& tbs = *certificate->TbsCertificate();
    EXPECT_TRUE(tbs.HasFault());
    EXPECT_TRUE(tbs.Validity()->HasFault());
    EXPECT_FALSE(tbs.SubjectPublicKeyInfo()->HasFault());
    EXPECT_EQ("CN=Subject", FirstValue(*tbs.Subject()));
    EXPECT_EQ(2U, tbs.Extensions()->Count());
    EXPECT_NE(nullptr, certificate->SignatureValue());
}

INSTANTIATE_TEST_SUITE_P(Blocks, CertificateTest,
                         testing::Values(Asn1Blocks::kAll, Asn1Blocks::kRead));

}  // namespace
