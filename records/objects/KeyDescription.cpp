#include "asn1/algorithms/DigestInfo.h"
#include "asn1/algorithms/DomainParameters.h"
#include "asn1/algorithms/EcParameters.h"
#include "asn1/algorithms/RsaParameters.h"
#include "asn1/keys/PrivateKeyInfo.h"
#include "asn1/keys/TraditionalKeys.h"
#include "asn1/views/AlgorithmViews.h"
#include "common/DecimalText.h"
#include "common/Encode.h"
#include "records/objects/Describers.h"
#include "records/objects/DescriptionParts.h"
#include "records/objects/KeyParts.h"
#include "records/objects/Reading.h"
#include "records/scan/ObjectShape.h"
#include "records/text/AlgorithmText.h"
#include "records/text/Decoded.h"

#include <string>
#include <string_view>
#include <utility>

// Keys, and the groups that they live in. What is secret is not shown.

namespace {

using ca::CDescriptionBuilder;
using ca::FieldId;
using ca::Of;
using ca::Word;
using Octets = std::span<const unsigned char>;

void SayGroup(CDescriptionBuilder& builder, const CAsn1Integer* prime, const CAsn1Integer* order) {
    builder.Text(FieldId::kPrime, ca::SizeText(prime));
    builder.Text(FieldId::kSubgroup, ca::SizeText(order));
}

// 2 and 5 are said, large generators by their size.
void SayGenerator(CDescriptionBuilder& builder, const CAsn1Integer* generator) {
    std::uint32_t small = 0;
    if (generator != nullptr) {
        builder.Text(FieldId::kGenerator, ca::ReadSmallInteger(*generator, small)
                                              ? ca::DecimalText(small)
                                              : ca::SizeText(generator));
    }
}

void SayRsaPublicKey(CDescriptionBuilder& builder, Octets octets) {
    const ca::CReading<CAsn1RsaPublicKey> key(octets, builder);
    builder.Text(FieldId::kFormat, Word::kPkcs1);
    builder.Text(FieldId::kKeyAlgorithm, SetZORNAMessage(kMsgRsa));
    if (key.Get() != nullptr) {
        builder.Text(FieldId::kKeyParameters,
                     ca::RsaSizeText(key.Get()->Modulus(), key.Get()->PublicExponent()));
        // The whole encoding: a PKCS #1 key has no bits round it.
        builder.Text(FieldId::kPublicKey, ca::Hex(key.Get()->Raw()));
    }
}

// ---- Private keys ----

// RSAPrivateKey (RFC 8017, A.1.2): what is public of it.
void SayRsaKey(CDescriptionBuilder& builder, Octets octets) {
    const ca::CReading<CAsn1RsaPrivateKey> key(octets, builder);
    builder.Text(FieldId::kKeyParameters,
                 ca::RsaSizeText(Of(key.Get(), &CAsn1RsaPrivateKey::Modulus),
                                 Of(key.Get(), &CAsn1RsaPrivateKey::PublicExponent)));
}

void SayTraditionalRsaKey(CDescriptionBuilder& builder, Octets octets) {
    builder.Text(FieldId::kFormat, Word::kPkcs1);
    builder.Text(FieldId::kKeyAlgorithm, SetZORNAMessage(kMsgRsa));
    SayRsaKey(builder, octets);
}

// The six numbers of the old DSA form; the first three are the group's.
void SayDsaKey(CDescriptionBuilder& builder, Octets octets) {
    const ca::CReading<CAsn1DsaPrivateKey> key(octets, builder);
    builder.Text(FieldId::kFormat, Word::kTraditionalKey);
    builder.Text(FieldId::kKeyAlgorithm, L"DSA");
    SayGroup(builder, Of(key.Get(), &CAsn1DsaPrivateKey::P), Of(key.Get(), &CAsn1DsaPrivateKey::Q));
}

// ECPrivateKey (RFC 5915, 3).
void SayEcKey(CDescriptionBuilder& builder, Octets octets) {
    const ca::CReading<CAsn1EcPrivateKey> key(octets, builder);
    builder.Text(FieldId::kFormat, Word::kSec1);
    builder.Text(FieldId::kKeyAlgorithm, Word::kEllipticCurve);
    if (key.Get() == nullptr) {
        return;
    }
    if (key.Get()->Parameters() != nullptr) {
        builder.Text(FieldId::kKeyParameters, ca::CurveText(*key.Get()->Parameters()));
    }
    builder.Text(FieldId::kPublicKey, ca::Hex(BitsOf(key.Get()->PublicKey()).octets));
}

// Keys without PKCS #8 round them: a label says what they are, a shape where there is none.
struct TraditionalKey {
    std::string_view label;
    std::string_view shape;
    void (*say)(CDescriptionBuilder& builder, Octets octets);
};
constexpr TraditionalKey kTraditionalKeys[] = {
    {"RSA PRIVATE KEY", "S(IIIIIIIII", SayTraditionalRsaKey},
    {"DSA PRIVATE KEY", "S(IIIIII$)", SayDsaKey},
    {"EC PRIVATE KEY", "S(IX", SayEcKey},
};

// ---- Encrypted PEM ----

// The value of a header; "" when there is none (RFC 1421, 4.6).
std::string_view HeaderOf(std::string_view headers, std::string_view name) {
    const std::size_t at = headers.find(name);
    if (at == std::string_view::npos) {
        return {};
    }
    const std::string_view value = headers.substr(at + name.size());
    return value.substr(0, value.find_first_of("\r\n"));
}

// "DEK-Info: AES-256-CBC,0123...": the cipher; what follows is the initialisation vector.
void SayEncryptedPem(const ca::ObjectSource& source, CDescriptionBuilder& builder) {
    // The label names the algorithm; nothing else of the key can be read.
    builder.Text(FieldId::kFormat, Word::kEncryptedPem);
    const std::string_view label = source.label.substr(0, source.label.find(" PRIVATE KEY"));
    builder.Text(FieldId::kKeyAlgorithm, ca::Visible(ca::u8u16(std::string(label))));
    std::string_view cipher = HeaderOf(source.headers, "DEK-Info: ");
    cipher = cipher.substr(0, cipher.find(','));
    builder.Text(FieldId::kEncryption, ca::Visible(ca::u8u16(std::string(cipher))));
}

}  // namespace

namespace ca {

// SubjectPublicKeyInfo, or the RSAPublicKey of PKCS #1 by itself.
void DescribePublicKeyObject(const ObjectSource& source, CDescriptionBuilder& builder) {
    const std::span<const unsigned char> octets = builder.Mended(source.octets);
    if (CAsn1RsaPublicKeyView(FirstElement(octets)).Modulus().tag == kAsn1Integer) {
        SayRsaPublicKey(builder, octets);
        return;
    }
    const CReading<CAsn1SubjectPublicKeyInfo> key(octets, builder);
    SayPublicKey(builder, key.Get());
}

void SayPrivateKeyInfo(CDescriptionBuilder& builder, const CAsn1PrivateKeyInfo& key) {
    builder.Text(FieldId::kFormat, Word::kPkcs8);
    PublicKeyForms forms;
    if (key.PrivateKeyAlgorithm() != nullptr) {
        forms = DescribeKeyAlgorithm(*key.PrivateKeyAlgorithm());
    }
    // OneAsymmetricKey may hold the public key (RFC 5958, 2).
    forms.key = Hex(BitsOf(key.PublicKey()).octets);
    const std::span<const unsigned char> octets = builder.Joined(key.PrivateKey());
    const CAsn1Element inner = FirstElement(octets);
    // Parameters of RSA are NULL: the size is in the key.
    if (forms.params.empty() && HasShape(inner, "S(IIIIIIIII")) {
        builder.Text(FieldId::kKeyAlgorithm, std::exchange(forms.algorithm, {}));
        SayRsaKey(builder, octets);
    } else if (forms.key.empty() && HasShape(inner, "S(IX")) {
        // Without a public key of its own, the curve's key may have one.
        const CReading<CAsn1EcPrivateKey> curveKey(octets, builder);
        forms.key = Hex(BitsOf(Of(curveKey.Get(), &CAsn1EcPrivateKey::PublicKey)).octets);
    }
    SayKey(builder, forms);
    SayAttributeList(builder, FieldId::kAttributes, key.Attributes(), AttributeValues::kKnown);
}

void SayEncryptedKey(CDescriptionBuilder& builder, const CAsn1EncryptedPrivateKeyInfo& key) {
    builder.Text(FieldId::kFormat, Word::kPkcs8);
    SayPasswordScheme(builder, FieldId::kEncryption, key.EncryptionAlgorithm());
    SaySize(builder, FieldId::kEncryptedSize, key.EncryptedData());
}

void DescribePrivateKey(const ObjectSource& source, CDescriptionBuilder& builder) {
    // First: from here on nothing is shown by its octets.
    builder.HideOctets();
    const std::span<const unsigned char> octets = builder.Mended(source.octets);
    const CAsn1Element root = FirstElement(octets);
    for (const TraditionalKey& known : kTraditionalKeys) {
        const bool isPkcs8 =
            CAsn1PrivateKeyInfoView(root).PrivateKeyAlgorithm().Element().tag == kAsn1Sequence;
        // A label is believed only where the octets are not PKCS #8: programs mix these labels up.
        if (HasShape(root, known.shape) || (!isPkcs8 && source.label == known.label)) {
            known.say(builder, octets);
            return;
        }
    }
    const CReading<CAsn1PrivateKeyInfo> key(octets, builder);
    if (key.Get() != nullptr) {
        SayPrivateKeyInfo(builder, *key.Get());
    }
}

void DescribeEncryptedPrivateKey(const ObjectSource& source, CDescriptionBuilder& builder) {
    // The octets are ciphertext then, not a structure.
    if (source.headers.find("ENCRYPTED") != std::string_view::npos) {
        SayEncryptedPem(source, builder);
        return;
    }
    const CReading<CAsn1EncryptedPrivateKeyInfo> key(source.octets, builder);
    if (key.Get() != nullptr) {
        SayEncryptedKey(builder, *key.Get());
    }
}

void DescribeDhParameters(const ObjectSource& source, CDescriptionBuilder& builder) {
    const std::span<const unsigned char> octets = builder.Mended(source.octets);
    // The second group of numbers has the order of a subgroup, which is never small.
    std::uint32_t small = 0;
    const CAsn1Element third = CAsn1DhGroupView(FirstElement(octets)).LengthOrOrder();
    if (third.tag == kAsn1Integer && !ReadSmallInteger(third, small)) {
        const CReading<CAsn1DomainParameters> group(octets, builder);
        builder.Text(FieldId::kFormat, L"X9.42");
        SayGroup(builder, Of(group.Get(), &CAsn1DomainParameters::P),
                 Of(group.Get(), &CAsn1DomainParameters::Q));
        SayGenerator(builder, Of(group.Get(), &CAsn1DomainParameters::G));
        return;
    }
    const CReading<CAsn1DhParameter> group(octets, builder);
    builder.Text(FieldId::kFormat, L"PKCS #3");
    SayGroup(builder, Of(group.Get(), &CAsn1DhParameter::Prime), nullptr);
    SayGenerator(builder, Of(group.Get(), &CAsn1DhParameter::Base));
    SayNumber(builder, FieldId::kPrivateValueBits,
              Of(group.Get(), &CAsn1DhParameter::PrivateValueLength));
}

void DescribeDsaParameters(const ObjectSource& source, CDescriptionBuilder& builder) {
    const CReading<CAsn1DssParms> group(source.octets, builder);
    SayGroup(builder, Of(group.Get(), &CAsn1DssParms::P), Of(group.Get(), &CAsn1DssParms::Q));
    SayGenerator(builder, Of(group.Get(), &CAsn1DssParms::G));
}

void DescribeEcParameters(const ObjectSource& source, CDescriptionBuilder& builder) {
    // ECPKParameters: a name, or the numbers of a curve (RFC 3279, 2.3.5).
    const CReading<CAsn1EcpkParameters> curve(source.octets, builder);
    if (curve.Get() == nullptr) {
        return;
    }
    builder.Text(FieldId::kCurve, CurveText(*curve.Get()));
    SayOid(builder, FieldId::kIdentifier, curve.Get()->NamedCurve());
    if (const CAsn1EcParameters* given = curve.Get()->EcParameters()) {
        SayNumber(builder, FieldId::kVersion, given->Version());
        SayOid(builder, FieldId::kFieldType, Of(given->FieldId(), &CAsn1FieldId::FieldType));
        builder.Text(FieldId::kSubgroup, SizeText(given->Order()));
        SayNumber(builder, FieldId::kCofactor, given->Cofactor());
    }
}

void DescribeAlgorithm(const ObjectSource& source, CDescriptionBuilder& builder) {
    const CReading<CAsn1AlgorithmIdentifier> algorithm(source.octets, builder);
    if (algorithm.Get() != nullptr) {
        SayOid(builder, FieldId::kIdentifier, algorithm.Get()->Algorithm());
        SayPasswordScheme(builder, FieldId::kAlgorithm, algorithm.Get());
    }
}

void DescribeDigestInfo(const ObjectSource& source, CDescriptionBuilder& builder) {
    const CReading<CAsn1DigestInfo> digest(source.octets, builder);
    if (digest.Get() != nullptr) {
        SayDigest(builder, FieldId::kDigest, digest.Get()->DigestAlgorithm(),
                  digest.Get()->Digest());
    }
}

}  // namespace ca
