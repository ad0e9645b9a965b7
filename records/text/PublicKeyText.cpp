#include "asn1/Oid.h"
#include "asn1/algorithms/DomainParameters.h"
#include "asn1/algorithms/EcParameters.h"
#include "asn1/algorithms/GostParameters.h"
#include "asn1/algorithms/RsaParameters.h"
#include "asn1/views/AlgorithmViews.h"
#include "common/DecimalText.h"
#include "records/text/AlgorithmText.h"
#include "records/text/Decoded.h"
#include "records/text/OutlineText.h"
#include "records/text/ParametersText.h"
#include "records/text/TextLines.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <utility>

namespace {

using ca::Octets;
using ca::PublicKeyForms;
using Value = std::span<const unsigned char>;

// Bits of a magnitude after its leading zeros.
std::size_t BitSize(Octets magnitude) {
    const auto first = std::ranges::find_if(magnitude, [](unsigned char o) { return o != 0; });
    const auto octets = static_cast<std::size_t>(magnitude.end() - first);
    return octets != 0 ? 8 * (octets - 1) + static_cast<std::size_t>(std::bit_width(*first)) : 0;
}

std::wstring BitsText(std::size_t bits) {
    return ca::DecimalText(bits) + L' ' + SetZORNAMessage(kMsgBit);
}

std::wstring UnreadableKey(std::wstring_view fault) {
    std::wstring text = SetZORNAMessage(kMsgKeyUnreadable);
    return fault.empty() ? text : text.append(L": ").append(fault);
}

// The SHA-2 digests from one on, best first.
enum class Sha2 { k256, k384, k512 };
std::wstring DigestsFrom(Sha2 first) {
    constexpr ca::COid kDigests[] = {"id-sha256", "id-sha384", "id-sha512"};
    std::wstring text;
    for (auto i = static_cast<std::size_t>(first); i < std::size(kDigests); ++i) {
        text += text.empty() ? L"" : L", ";
        text += kDigests[i]->Name();
    }
    return text;
}

// Reads parameters that are there. What is not a T is shown and named as a fault.
template <class T, class SayOne>
void ReadParameters(const CAsn1AlgorithmView& algorithm, PublicKeyForms& forms, SayOne say) {
    const CAsn1Element params = algorithm.Parameters();
    if (params.raw.empty() || params.tag == kAsn1Null) {
        return;
    }
    const ca::CPartlyDecoded<T> read(params.raw);
    if (read.Get() != nullptr) {
        say(*read.Get());
    }
    if (!read.IsWhole()) {
        forms.error = read.Fault();
        forms.params = forms.params.empty() ? ca::UnreadableText(params.raw) : forms.params;
    }
}

// ---- RSA ----

// RSAPublicKey (RFC 8017, A.1.1).
void ReadRsaKey(Value bits, PublicKeyForms& forms) {
    const ca::CPartlyDecoded<CAsn1RsaPublicKey> key(bits);
    const Octets modulus = OctetsOf(key.Get() != nullptr ? key.Get()->Modulus() : nullptr);
    const CAsn1Integer* exponent = key.Get() != nullptr ? key.Get()->PublicExponent() : nullptr;
    const bool hasBoth = !modulus.empty() && !OctetsOf(exponent).empty();
    // A fault of the parameters was there first, and stays.
    if ((!hasBoth || !key.IsWhole()) && forms.error.empty()) {
        forms.error = UnreadableKey(key.Fault());
    }
    // A key that is damaged after its two numbers still tells its size.
    if (hasBoth) {
        forms.params = ca::RsaSizeText(key.Get()->Modulus(), exponent);
    }
}

// Its parameters are NULL (RFC 3279, 2.3.1).
void DescribeRsaKey(const CAsn1AlgorithmView& /*algorithm*/, PublicKeyForms& forms) {
    forms.hashAlgs = DigestsFrom(Sha2::k256);
}

// A key with parameters is for these alone (RFC 4055, 1.2).
void DescribePssKey(const CAsn1AlgorithmView& algorithm, PublicKeyForms& forms) {
    const ca::ParametersForms pss = ca::DescribeParameters(algorithm);
    forms.error = pss.error;
    forms.hashAlgs = pss.digest.empty() ? DigestsFrom(Sha2::k256) : pss.digest;
}

// ---- Elliptic curves ----

// The digest as strong as the curve, then the longer ones (RFC 5480, 4).
Sha2 BestDigest(const ca::OidInfo& curve) {
    struct CurveRow {
        ca::COid curve;
        Sha2 digest;
    };
    constexpr CurveRow kLong[] = {{"secp384r1", Sha2::k384},
                                  {"brainpoolP384r1", Sha2::k384},
                                  {"brainpoolP320r1", Sha2::k384},
                                  {"secp521r1", Sha2::k512},
                                  {"brainpoolP512r1", Sha2::k512}};
    for (const auto& [type, digest] : kLong) {
        if (type == &curve) {
            return digest;
        }
    }
    return Sha2::k256;
}

// FieldID (RFC 3279, 2.3.5).
// The size of a field: that of its prime, or the degree of one of characteristic two.
std::size_t FieldBits(const CAsn1FieldId& field) {
    if (field.Parameters() == nullptr) {
        return 0;
    }
    const Value params = field.Parameters()->Raw();
    if (field.Parameters()->Tag() != kAsn1Sequence) {
        return BitSize(OctetsOf(field.Parameters()));
    }
    // The degree is whatever a stranger wrote: below zero, or past 64 bits, it is not a size.
    const ca::CPartlyDecoded<CAsn1CharacteristicTwo> binary(params);
    return static_cast<std::size_t>(std::max<std::int64_t>(0, IntegerOf(binary.Get()->M(), 0)));
}

// A key on the curve of SM2 is one of SM2, which works with SM3 (GB/T 32918.5, GB/T 35276 5).
void NameSm2(PublicKeyForms& forms) {
    forms.algorithm = L"SM2";
    forms.hashAlgs = ca::COid("sm3")->Name();
}

// ECPKParameters: a name as a rule (RFC 5480, 2.1.1); written-out curves keep the usual digests.
void DescribeEcKey(const CAsn1AlgorithmView& algorithm, PublicKeyForms& forms) {
    forms.hashAlgs = DigestsFrom(Sha2::k256);
    ReadParameters<CAsn1EcpkParameters>(algorithm, forms, [&](const CAsn1EcpkParameters& curve) {
        forms.params = ca::CurveText(curve);
        const ca::OidInfo* row = ca::FindOid(OctetsOf(curve.NamedCurve()));
        if (row == ca::COid("sm2p256v1")) {
            NameSm2(forms);
        } else if (row != nullptr) {
            forms.hashAlgs = DigestsFrom(BestDigest(*row));
        }
    });
}

// ---- DSA, Diffie-Hellman ----

// Dss-Parms (RFC 3279, 2.3.2).
void DescribeDsaKey(const CAsn1AlgorithmView& algorithm, PublicKeyForms& forms) {
    ReadParameters<CAsn1DssParms>(algorithm, forms, [&](const CAsn1DssParms& group) {
        forms.params = ca::SizeText(group.P());
    });
}

// DomainParameters of X9.42 (RFC 3279, 2.3.3).
void DescribeDhKey(const CAsn1AlgorithmView& algorithm, PublicKeyForms& forms) {
    ReadParameters<CAsn1DomainParameters>(
        algorithm, forms,
        [&](const CAsn1DomainParameters& group) { forms.params = ca::SizeText(group.P()); });
}

// DHParameter of PKCS #3.
void DescribeOldDhKey(const CAsn1AlgorithmView& algorithm, PublicKeyForms& forms) {
    ReadParameters<CAsn1DhParameter>(algorithm, forms, [&](const CAsn1DhParameter& group) {
        forms.params = ca::SizeText(group.Prime());
    });
}

// ---- GOST ----

// The sets of curve, digest and cipher, those that are there (RFC 4491, 2.3; RFC 9215, 4).
void DescribeGostKey(const CAsn1AlgorithmView& algorithm, PublicKeyForms& forms) {
    ReadParameters<CAsn1GostPublicKeyParameters>(algorithm, forms, [&](const auto& sets) {
        ca::CTextLines lines;
        for (const auto* set :
             {sets.PublicKeyParamSet(), sets.DigestParamSet(), sets.EncryptionParamSet()}) {
            if (set != nullptr) {
                lines.Line(ca::OidName(OctetsOf(set)));
            }
        }
        forms.params = lines.Take();
    });
}

// The key is an OCTET STRING inside the bits (RFC 4491, 2.3, RFC 9215, 4).
void ReadGostKey(Value bits, PublicKeyForms& forms) {
    const CAsn1Element key = ca::FirstElement(bits);
    if (key.tag == kAsn1OctetString && key.raw.size() == bits.size()) {
        forms.key = ca::Hex(key.content);
    } else {
        forms.error = UnreadableKey(forms.error);
    }
}

struct KeyRow {
    ca::COid algorithm;
    void (*describe)(const CAsn1AlgorithmView& algorithm,
                     PublicKeyForms& forms);          // null: nothing to say
    void (*read)(Value bits, PublicKeyForms& forms);  // null: the bits are the key
};
constexpr KeyRow kRows[] = {
    {"rsaEncryption", DescribeRsaKey, ReadRsaKey},
    {"rsaX500", DescribeRsaKey, ReadRsaKey},
    {"id-RSASSA-PSS", DescribePssKey, ReadRsaKey},
    {"id-RSAES-OAEP", nullptr, ReadRsaKey},
    {"id-ecPublicKey", DescribeEcKey, nullptr},
    {"id-ecDH", DescribeEcKey, nullptr},
    {"id-dsa", DescribeDsaKey, nullptr},
    {"dsaOIW", DescribeDsaKey, nullptr},
    {"dhpublicnumber", DescribeDhKey, nullptr},
    {"dhKeyAgreement", DescribeOldDhKey, nullptr},
    {"id-tc26-gost3410-12-256", DescribeGostKey, ReadGostKey},
    {"id-tc26-gost3410-12-512", DescribeGostKey, ReadGostKey},
    {"id-GostR3410-2001", DescribeGostKey, ReadGostKey},
    {"id-GostR3410-94", DescribeGostKey, ReadGostKey},
};

const KeyRow* FindRow(const ca::OidInfo* type) {
    const auto* const row =
        std::ranges::find_if(kRows, [&](const KeyRow& each) { return each.algorithm == type; });
    return row != std::end(kRows) ? row : nullptr;
}

}  // namespace

namespace ca {

// Bits of the modulus, without the octet that keeps it positive.
std::wstring SizeText(const CAsn1Integer* modulus) {
    return modulus != nullptr ? BitsText(BitSize(OctetsOf(modulus))) : std::wstring();
}

std::wstring RsaSizeText(const CAsn1Integer* modulus, const CAsn1Integer* exponent) {
    std::wstring text = SizeText(modulus);
    if (exponent != nullptr && !text.empty()) {
        std::uint32_t small = 0;
        text.append(L", ").append(SetZORNAMessage(kMsgExponent)).append(1, L' ');
        text += ReadSmallInteger(*exponent, small) ? DecimalText(small) : Hex(OctetsOf(exponent));
    }
    return text;
}

std::wstring CurveText(const CAsn1EcpkParameters& curve) {
    if (curve.NamedCurve() != nullptr) {
        return OidName(OctetsOf(curve.NamedCurve()));
    }
    const CAsn1EcParameters* given = curve.EcParameters();
    if (given == nullptr || given->FieldId() == nullptr ||
        given->FieldId()->Parameters() == nullptr) {
        // The name of a curve that is written out is not given: comparing all its numbers would be
        // needed for it.
        return {};
    }
    return SetZORNAMessage(kMsgExplicitParameters) +
           (L", " + BitsText(FieldBits(*given->FieldId())));
}

PublicKeyForms DescribeKeyAlgorithm(const CAsn1AlgorithmView& algorithm) {
    PublicKeyForms forms;
    forms.algorithm = AlgorithmText(algorithm);
    const OidInfo* type = FindOid(algorithm.Algorithm());
    const OidInfo* digest = type != nullptr ? DigestOf(*type) : nullptr;
    // Some types fix the digest by themselves, as those of GOST; the rows may say otherwise.
    if (digest != nullptr) {
        forms.hashAlgs = digest->Name();
    }
    const KeyRow* row = FindRow(type);
    if (row != nullptr && row->describe != nullptr) {
        row->describe(algorithm, forms);
    }
    return forms;
}

PublicKeyForms DescribePublicKey(const CAsn1PublicKeyInfoView& publicKeyInfo) {
    const CAsn1AlgorithmView algorithm = publicKeyInfo.Algorithm();
    const CAsn1Element bitString = publicKeyInfo.SubjectPublicKey();
    const Octets oid = algorithm.Algorithm();
    if (oid.empty() || bitString.tag != kAsn1BitString) {
        PublicKeyForms forms;
        forms.error = UnreadableKey({});
        return forms;
    }
    const Octets bits = BitOctets(bitString);
    PublicKeyForms forms = DescribeKeyAlgorithm(algorithm);
    // The octets of the bits, until a row knows what is inside them.
    forms.key = Hex(bits);
    const KeyRow* row = FindRow(FindOid(oid));
    if (row != nullptr && row->read != nullptr) {
        row->read(bits, forms);
    }
    return forms;
}

}  // namespace ca
