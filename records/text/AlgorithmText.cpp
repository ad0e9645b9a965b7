#include "records/text/AlgorithmText.h"

#include "asn1/OidTable.h"
#include "records/text/TextLines.h"

#include <algorithm>
#include <array>
#include <bit>
#include <string_view>

namespace {

using ca::ContentIf;
using ca::Octets;

// Digests by the short name of the signature or key algorithm they belong to.
struct DigestRow {
    std::string_view algorithm;
    std::string_view digest;
};
constexpr DigestRow kDigests[] = {
    {"sha256WithRSAEncryption", "id-sha256"},
    {"ecdsa-with-SHA256", "id-sha256"},
    {"sha384WithRSAEncryption", "id-sha384"},
    {"ecdsa-with-SHA384", "id-sha384"},
    {"sha512WithRSAEncryption", "id-sha512"},
    {"ecdsa-with-SHA512", "id-sha512"},
    {"sha1WithRSAEncryption", "id-sha1"},
    {"id-tc26-signwithdigest-gost3410-12-256", "id-tc26-gost3411-12-256"},
    {"id-tc26-signwithdigest-gost3410-12-512", "id-tc26-gost3411-12-512"},
    {"id-GostR3411-94-with-GostR3410-2001", "id-GostR3411-94"},
    {"id-GostR3411-94-with-GostR3410-94", "id-GostR3411-94"},
    {"id-tc26-gost3410-12-256", "id-tc26-gost3411-12-256"},
    {"id-tc26-gost3410-12-512", "id-tc26-gost3411-12-512"},
    {"id-GostR3410-2001", "id-GostR3411-94"},
    {"id-GostR3410-94", "id-GostR3411-94"},
    {"sha224WithRSAEncryption", "id-sha224"},
    {"sha512-224WithRSAEncryption", "id-sha512-224"},
    {"sha512-256WithRSAEncryption", "id-sha512-256"},
    {"ecdsa-with-SHA1", "id-sha1"},
    {"ecdsa-with-SHA224", "id-sha224"},
    {"id-dsa-with-sha1", "id-sha1"},
    {"id-dsa-with-sha256", "id-sha256"},
    {"id-Ed25519", "id-sha512"},
    {"id-Ed448", "id-shake256"},
    {"md5WithRSAEncryption", "md5"},
    {"md5WithRSA", "md5"},
    {"sha1WithRSA", "id-sha1"},
    {"rsaSignatureWithripemd160", "ripemd160"},
    {"ecdsa-plain-SHA256", "id-sha256"},
    {"ecdsa-plain-SHA384", "id-sha384"},
    {"ecdsa-plain-SHA512", "id-sha512"},
    {"id-ecdsa-with-sha3-224", "id-sha3-224"},
    {"id-ecdsa-with-sha3-256", "id-sha3-256"},
    {"id-ecdsa-with-sha3-384", "id-sha3-384"},
    {"id-ecdsa-with-sha3-512", "id-sha3-512"},
    {"id-rsassa-pkcs1-v1_5-with-sha3-224", "id-sha3-224"},
    {"id-rsassa-pkcs1-v1_5-with-sha3-256", "id-sha3-256"},
    {"id-rsassa-pkcs1-v1_5-with-sha3-384", "id-sha3-384"},
    {"id-rsassa-pkcs1-v1_5-with-sha3-512", "id-sha3-512"},
    {"id-RSASSA-PSS-SHAKE128", "id-shake128"},
    {"id-RSASSA-PSS-SHAKE256", "id-shake256"},
    {"id-ecdsa-with-shake128", "id-shake128"},
    {"id-ecdsa-with-shake256", "id-shake256"},
    {"SM2-with-SM3", "sm3"},
    {"RSA-SM3", "sm3"},
    {"bign-with-hbelt", "hbelt"},
    {"dstu4145le", "dstu34311"},
};

constexpr std::string_view kPss = "id-RSASSA-PSS";
constexpr std::string_view kOaep = "id-RSAES-OAEP";
constexpr std::string_view kRsa = "rsaEncryption";
constexpr std::string_view kEc = "id-ecPublicKey";
constexpr std::string_view kGostKeys[] = {"id-tc26-gost3410-12-256", "id-tc26-gost3410-12-512",
                                          "id-GostR3410-2001", "id-GostR3410-94"};

Octets TypeOf(const CAsn1Element& algorithm) {
    return ContentIf(ca::Child(algorithm, 0), kAsn1ObjectIdentifier);
}

std::string_view ShortNameOf(Octets type) {
    const ca::OidInfo* info = ca::FindOid(type);
    return info != nullptr ? info->shortName : std::string_view();
}

std::wstring NameOf(std::string_view shortName) {
    const ca::OidInfo* info = ca::FindOidByShortName(shortName);
    return info != nullptr ? SetZORNAMessage(info->messageId) : L"";
}

std::string_view DigestOf(std::string_view algorithm) {
    for (const DigestRow& row : kDigests) {
        if (row.algorithm == algorithm) {
            return row.digest;
        }
    }
    return {};
}

// RSASSA-PSS-params ::= SEQUENCE {                            RFC 4055, 3.1
//     hashAlgorithm [0] DEFAULT sha1, maskGenAlgorithm [1] DEFAULT mgf1SHA1,
//     saltLength [2] INTEGER DEFAULT 20, trailerField [3] INTEGER DEFAULT 1 }
// The first two members of RSAES-OAEP-params (4.1) are the same.
struct PssParams {
    std::wstring digest = NameOf("id-sha1");
    std::wstring maskDigest = digest;
    std::uint32_t saltLength = 20;
};

PssParams ReadPss(const CAsn1Element& algorithm) {
    PssParams params;
    CAsn1Element field;
    for (CAsn1Cursor fields(ca::Child(algorithm, 1).content);
         !fields.AtEnd() && fields.Next(field) == Asn1Fault::kNone;) {
        const CAsn1Element value = ca::Child(field, 0);
        if (field.tag == ca::ContextConstructed(0)) {
            params.digest = ca::OidName(TypeOf(value));
        } else if (field.tag == ca::ContextConstructed(1)) {
            params.maskDigest = ca::OidName(TypeOf(ca::Child(value, 1)));
        } else if (field.tag == ca::ContextConstructed(2)) {
            ca::ReadSmallInteger(value, params.saltLength);
        }
    }
    return params;
}

// Bits of a magnitude behind its leading zeros.
std::size_t BitSize(Octets magnitude) {
    const auto first = std::ranges::find_if(magnitude, [](unsigned char o) { return o != 0; });
    const auto octets = static_cast<std::size_t>(magnitude.end() - first);
    return octets != 0 ? 8 * (octets - 1) + static_cast<std::size_t>(std::bit_width(*first)) : 0;
}

std::wstring BitsText(std::size_t bits) {
    return ca::DecimalText(bits) + L' ' + SetZORNAMessage(kMsgBit);
}

// A SEQUENCE { modulus INTEGER, publicExponent INTEGER } (RFC 8017 A.1.1) inside the key's bits.
void DescribeRsa(const CAsn1Element& bitString, ca::PublicKeyForms& forms) {
    const CAsn1Element key = ca::FirstElement(
        bitString.content.subspan(std::min<std::size_t>(1, bitString.content.size())));
    const Octets modulus = ContentIf(ca::Child(key, 0), kAsn1Integer);
    const CAsn1Element exponent = ca::Child(key, 1);
    if (modulus.empty() || ContentIf(exponent, kAsn1Integer).empty()) {
        forms.error = SetZORNAMessage(kMsgKeyUnreadable);
        return;
    }
    std::uint32_t small = 0;
    forms.params = BitsText(BitSize(modulus)) + L", " + SetZORNAMessage(kMsgExponent) + L' ' +
                   (ca::ReadSmallInteger(exponent, small) ? ca::DecimalText(small)
                                                          : ca::Hex(exponent.content));
}

// ECParameters: a named curve, or SpecifiedECDomain ::= SEQUENCE { version, fieldID SEQUENCE {
// fieldType, prime INTEGER }, ... } (SEC 1 C.2, RFC 3279 2.3.5).
void DescribeEc(const CAsn1Element& params, ca::PublicKeyForms& forms) {
    if (params.tag == kAsn1ObjectIdentifier) {
        forms.params = ca::OidName(params.content);
        return;
    }
    const CAsn1Element prime = ca::Child(ca::Child(params, 1), 1);
    if (params.tag != kAsn1Sequence || prime.raw.empty()) {
        return;
    }
    std::size_t size = BitSize(ContentIf(prime, kAsn1Integer));
    if (std::uint32_t degree = 0; ca::ReadSmallInteger(ca::Child(prime, 0), degree)) {
        size = degree;  // a field of characteristic two: its degree comes first
    }
    forms.params = SetZORNAMessage(kMsgExplicitParameters) + (L", " + BitsText(size));
}

// GostR3410-PublicKeyParameters ::= SEQUENCE { publicKeyParamSet, digestParamSet OPTIONAL,
// encryptionParamSet OPTIONAL } (RFC 4491 2.3.2, RFC 9215 4).
void DescribeGost(const CAsn1Element& params, Octets bits, ca::PublicKeyForms& forms) {
    ca::CTextLines lines;
    CAsn1Element set;
    for (CAsn1Cursor sets(params.content); !sets.AtEnd() && sets.Next(set) == Asn1Fault::kNone;) {
        if (set.tag == kAsn1ObjectIdentifier) {
            lines.Line(ca::OidName(set.content));
        }
    }
    forms.params = lines.Take();
    // OCTET STRING header: one octet of length up to 127, one more for the 512-bit keys' 128.
    const std::size_t header = bits.size() > 1 && bits[1] == 0x81 ? 3 : 2;
    if (bits.size() > header && bits[0] == kAsn1OctetString &&
        bits[header - 1] == bits.size() - header) {
        bits = bits.subspan(header);
    } else {
        forms.error = SetZORNAMessage(kMsgKeyUnreadable);
    }
    forms.key = ca::Hex(bits);
}

std::wstring JoinNames(std::span<const std::string_view> shortNames) {
    std::wstring text;
    for (const std::string_view name : shortNames) {
        if (!text.empty()) {
            text += L", ";
        }
        text += NameOf(name);
    }
    return text;
}

// Best first: the digest as strong as the curve, then the longer ones (RFC 5480 4).
std::wstring EcDigests(const CAsn1Element& params) {
    constexpr std::array<std::string_view, 3> kAll = {"id-sha256", "id-sha384", "id-sha512"};
    constexpr std::string_view k384[] = {"secp384r1", "brainpoolP384r1", "brainpoolP320r1"};
    constexpr std::string_view k512[] = {"secp521r1", "brainpoolP512r1"};
    const std::string_view curve = ShortNameOf(ContentIf(params, kAsn1ObjectIdentifier));
    std::size_t first = 0;
    if (std::ranges::find(k384, curve) != std::end(k384)) {
        first = 1;
    } else if (std::ranges::find(k512, curve) != std::end(k512)) {
        first = 2;
    }
    return JoinNames(std::span(kAll).subspan(first));
}

}  // namespace

namespace ca {

std::wstring AlgorithmText(const CAsn1Element& algorithm) {
    const Octets type = TypeOf(algorithm);
    std::wstring text = type.empty() ? std::wstring() : OidName(type);
    if (ShortNameOf(type) == kPss) {
        const PssParams params = ReadPss(algorithm);
        text += L", " + params.digest + L", MGF1 " + params.maskDigest + L", " +
                std::to_wstring(params.saltLength);
    }
    return text;
}

std::wstring InnerAlgorithmText(const CAsn1Element& algorithm) {
    const CAsn1Element params = Child(algorithm, 1);
    if (params.tag != kAsn1Sequence) {
        return {};
    }
    if (ShortNameOf(TypeOf(algorithm)) == kOaep) {
        const PssParams digests = ReadPss(algorithm);
        return digests.digest + L", MGF1 " + digests.maskDigest;
    }
    return AlgorithmText(params);
}

std::wstring SignatureDigestText(const CAsn1Element& algorithm) {
    const std::string_view name = ShortNameOf(TypeOf(algorithm));
    if (name == kPss) {
        return ReadPss(algorithm).digest;
    }
    const std::string_view digest = DigestOf(name);
    return digest.empty() ? std::wstring() : NameOf(digest);
}

std::wstring SignerAlgorithmText(const CAsn1Element& signature, const CAsn1Element& digest) {
    const OidInfo* info = FindOid(TypeOf(signature));
    const bool isKeyAlone = info != nullptr && info->kind == OidKind::kKey;
    if (!isKeyAlone || TypeOf(digest).empty()) {
        return AlgorithmText(signature);
    }
    return SetZORNAMessage(info->messageId) + std::wstring(L" ") + SetZORNAMessage(kMsgWith) +
           L' ' + OidName(TypeOf(digest));
}

PublicKeyForms DescribePublicKey(const CAsn1Element& publicKeyInfo) {
    PublicKeyForms forms;
    const CAsn1Element algorithm = Child(publicKeyInfo, 0);
    const CAsn1Element bitString = Child(publicKeyInfo, 1);
    const Octets type = TypeOf(algorithm);
    if (type.empty() || bitString.tag != kAsn1BitString) {
        forms.error = SetZORNAMessage(kMsgKeyUnreadable);
        return forms;
    }
    const CAsn1Element params = Child(algorithm, 1);
    const Octets bits = BitOctets(bitString);
    const std::string_view name = ShortNameOf(type);
    forms.algorithm = AlgorithmText(algorithm);
    forms.key = Hex(bits);
    if (name == kRsa || name == kPss) {
        constexpr std::string_view kRsaDigests[] = {"id-sha256", "id-sha384", "id-sha512"};
        DescribeRsa(bitString, forms);
        forms.hashAlgs = JoinNames(kRsaDigests);
    } else if (name == kEc) {
        DescribeEc(params, forms);
        forms.hashAlgs = EcDigests(params);
    } else {
        if (std::ranges::find(kGostKeys, name) != std::end(kGostKeys)) {
            DescribeGost(params, bits, forms);
        }
        forms.hashAlgs = NameOf(DigestOf(name));
    }
    return forms;
}

}  // namespace ca
