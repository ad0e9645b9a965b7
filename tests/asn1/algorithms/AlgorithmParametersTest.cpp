#include "asn1/algorithms/CipherParameters.h"
#include "asn1/algorithms/DomainParameters.h"
#include "asn1/algorithms/EcParameters.h"
#include "asn1/algorithms/GostParameters.h"
#include "asn1/algorithms/PasswordParameters.h"
#include "asn1/algorithms/RsaParameters.h"
#include "common/Exception.h"
#include "tests/asn1/DerWriter.h"

#include <gtest/gtest.h>

#include <string>

namespace {

const Octets kOid = {0x06, 0x02, 0x2A, 0x03};
const Octets kAlgorithm = Tlv(0x30, {kOid, {0x05, 0x00}});
const Octets kKey = Tlv(0x04, {0xAB, 0xCD});

Octets Int(unsigned char value) {
    return {0x02, 0x01, value};
}

// The members' content in hexadecimal, "-" for one that is absent, "," between them.
std::string Members(std::initializer_list<const CAsn1Object*> members) {
    std::string text;
    for (const CAsn1Object* member : members) {
        text += text.empty() ? "" : ",";
        text += member == nullptr ? "-" : "";
        for (const unsigned char octet : OctetsOf(member)) {
            constexpr char kDigits[] = "0123456789abcdef";
            text += {kDigits[octet >> 4], kDigits[octet & 0x0F]};
        }
    }
    return text;
}

// What a T reads of octets; "!" in front when they are not wholly one.
template <class T, class Say>
std::string Read(Octets octets, Say say) {
    const Octets before = octets;
    CAsn1Root<T> root(octets, Asn1Blocks::kRead);
    std::string fault;
    try {
        root->Decode();
    } catch (const ca::Exception&) {
        fault = "!";
    }
    EXPECT_EQ(before, octets) << "decoding changed the octets";
    return fault + say(*root);
}

TEST(AlgorithmParametersTest, KeysOfRsaNeedBothNumbers) {
    const auto say = [](const CAsn1RsaPublicKey& key) {
        return Members({key.Modulus(), key.PublicExponent()});
    };
    EXPECT_EQ("55,03", Read<CAsn1RsaPublicKey>(Tlv(0x30, {Int(0x55), Int(3)}), say));
    EXPECT_EQ("!55,-", Read<CAsn1RsaPublicKey>(Tlv(0x30, Int(0x55)), say));
    EXPECT_EQ("!55,03", Read<CAsn1RsaPublicKey>(Tlv(0x30, {Int(0x55), Int(3), Int(1)}), say));
}

TEST(AlgorithmParametersTest, GroupsOfDiffieHellmanDifferInTheOrderOfTheirNumbers) {
    const Octets validation = Tlv(0x30, {{0x03, 0x02, 0x00, 0x77}, Int(9)});
    const Octets x942 = Tlv(0x30, {Int(1), Int(2), Int(3), Int(4), validation});
    EXPECT_EQ("01,03,02,04,0077,09",
              Read<CAsn1DomainParameters>(x942, [](const CAsn1DomainParameters& group) {
                  return Members({group.P(), group.Q(), group.G(), group.J(),
                                  group.ValidationParms()->Seed(),
                                  group.ValidationParms()->PgenCounter()});
              }));
    EXPECT_EQ("01,02,03", Read<CAsn1DssParms>(Tlv(0x30, {Int(1), Int(2), Int(3)}),
                                              [](const CAsn1DssParms& group) {
                                                  return Members({group.P(), group.Q(), group.G()});
                                              }));
    EXPECT_EQ("01,02,-",
              Read<CAsn1DhParameter>(Tlv(0x30, {Int(1), Int(2)}), [](const CAsn1DhParameter& dh) {
                  return Members({dh.Prime(), dh.Base(), dh.PrivateValueLength()});
              }));
}

TEST(AlgorithmParametersTest, CurvesAreNamedGivenOrThoseOfTheAuthority) {
    const Octets binary = Tlv(0x30, {Int(0x71), kOid, {0x05, 0x00}});
    const Octets curve = Tlv(0x30, {kKey, kKey, {0x03, 0x02, 0x00, 0x77}});
    const Octets given = Tlv(0x30, {Int(1), Tlv(0x30, {kOid, binary}), curve, kKey, Int(7)});
    const auto say = [](const CAsn1EcpkParameters& params) {
        const CAsn1EcParameters* domain = params.EcParameters();
        return params.NamedCurve() != nullptr     ? "named " + Members({params.NamedCurve()})
               : params.ImplicitlyCa() != nullptr ? std::string("implicit")
               : domain != nullptr
                   ? Members({domain->Curve()->Seed(), domain->Order(), domain->Cofactor()})
                   : std::string();
    };
    EXPECT_EQ("named 2a03", Read<CAsn1EcpkParameters>(kOid, say));
    EXPECT_EQ("implicit", Read<CAsn1EcpkParameters>({0x05, 0x00}, say));
    EXPECT_EQ("0077,07,-", Read<CAsn1EcpkParameters>(given, say));
    EXPECT_EQ("71,2a03",
              Read<CAsn1CharacteristicTwo>(binary, [](const CAsn1CharacteristicTwo& field) {
                  return Members({field.M(), field.Basis()});
              }));
}

}  // namespace
