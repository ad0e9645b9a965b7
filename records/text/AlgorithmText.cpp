#include "records/text/AlgorithmText.h"

#include "asn1/OidTable.h"
#include "records/text/TextLines.h"

#include <algorithm>
#include <array>
#include <bit>
#include <string_view>
#include <vector>

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
constexpr std::string_view kRsa = "rsaEncryption";
constexpr std::string_view kEc = "id-ecPublicKey";
constexpr std::string_view kGostKeys[] = {"id-tc26-gost3410-12-256", "id-tc26-gost3410-12-512",
                                          "id-GostR3410-2001", "id-GostR3410-94"};

Octets TypeOf(const CAsn1Block* algorithm) {
    return algorithm != nullptr ? ContentIf(algorithm->GetInnerBlock(0), ca::kTagOid) : Octets();
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
struct PssParams {
    std::wstring digest = NameOf("id-sha1");
    std::wstring maskDigest = digest;
    std::uint32_t saltLength = 20;
};

PssParams ReadPss(const CAsn1Block& algorithm) {
    PssParams params;
    const CAsn1Block* fields = algorithm.GetInnerBlock(1);
    if (fields == nullptr) {
        return params;
    }
    for (const CAsn1Block* field : fields->GetInnerBlocks()) {
        const CAsn1Block* value = field->GetInnerBlock(0);
        if (value == nullptr) {
            continue;
        }
        if (field->tag == ca::ContextConstructed(0)) {
            params.digest = ca::OidName(TypeOf(value));
        } else if (field->tag == ca::ContextConstructed(1)) {
            params.maskDigest = ca::OidName(TypeOf(value->GetInnerBlock(1)));
        } else if (field->tag == ca::ContextConstructed(2)) {
            ca::ReadSmallInteger(*value, params.saltLength);
        }
    }
    return params;
}

// A SEQUENCE { modulus INTEGER, publicExponent INTEGER } (RFC 8017 A.1.1) inside the key's bits.
void DescribeRsa(Octets bits, ca::PublicKeyForms& forms) {
    std::vector<unsigned char> copy(bits.begin(), bits.end());
    CCryptAsn1Parser parser;
    parser.Parse(copy.data(), static_cast<unsigned>(copy.size()), /*stopAtTruncation=*/true,
                 /*continueOnLengthMismatch=*/false, /*singleRoot=*/true);
    const CAsn1Block* key = parser.GetRoot(0);
    const Octets modulus =
        key != nullptr ? ContentIf(key->GetInnerBlock(0), ca::kTagInteger) : Octets();
    const CAsn1Block* exponent = key != nullptr ? key->GetInnerBlock(1) : nullptr;
    if (modulus.empty() || ContentIf(exponent, ca::kTagInteger).empty()) {
        forms.error = SetZORNAMessage(kMsgKeyUnreadable);
        return;
    }
    const auto first = std::find_if(modulus.begin(), modulus.end(),
                                    [](unsigned char octet) { return octet != 0; });
    const auto octets = static_cast<std::size_t>(modulus.end() - first);
    const std::size_t size = octets != 0 ? 8 * (octets - 1) + std::bit_width(*first) : 0;
    std::uint32_t small = 0;
    forms.params = std::to_wstring(size) + L' ' + SetZORNAMessage(kMsgBit) + L", " +
                   SetZORNAMessage(kMsgExponent) + L' ' +
                   (ca::ReadSmallInteger(*exponent, small) ? std::to_wstring(small)
                                                           : ca::Hex(ca::ContentOf(*exponent)));
}

// ECParameters: a named curve, or SpecifiedECDomain ::= SEQUENCE { version, fieldID SEQUENCE {
// fieldType, prime INTEGER }, ... } (SEC 1 C.2, RFC 3279 2.3.5).
void DescribeEc(const CAsn1Block* params, ca::PublicKeyForms& forms) {
    if (params == nullptr) {
        return;
    }
    if (params->tag == ca::kTagOid) {
        forms.params = ca::OidName(ca::ContentOf(*params));
        return;
    }
    const CAsn1Block* field = params->GetInnerBlock(1);
    const CAsn1Block* prime = field != nullptr ? field->GetInnerBlock(1) : nullptr;
    if (params->tag != ca::kTagSequence || prime == nullptr) {
        return;
    }
    forms.params = SetZORNAMessage(kMsgExplicitParameters);
    std::uint32_t size = 0;
    if (prime->tag == ca::kTagInteger) {
        Octets octets = ca::ContentOf(*prime);
        while (!octets.empty() && octets[0] == 0) {
            octets = octets.subspan(1);
        }
        size =
            octets.empty()
                ? 0
                : static_cast<std::uint32_t>(8 * (octets.size() - 1) + std::bit_width(octets[0]));
    } else if (prime->GetInnerBlock(0) != nullptr) {  // characteristic two: m comes first
        ca::ReadSmallInteger(*prime->GetInnerBlock(0), size);
    }
    forms.params += L", " + std::to_wstring(size) + L' ' + SetZORNAMessage(kMsgBit);
}

// GostR3410-PublicKeyParameters ::= SEQUENCE { publicKeyParamSet, digestParamSet OPTIONAL,
// encryptionParamSet OPTIONAL } (RFC 4491 2.3.2, RFC 9215 4).
void DescribeGost(const CAsn1Block* params, Octets bits, ca::PublicKeyForms& forms) {
    ca::CTextLines lines;
    if (params != nullptr) {
        for (const CAsn1Block* set : params->GetInnerBlocks()) {
            if (set->tag == ca::kTagOid) {
                lines.Line(ca::OidName(ca::ContentOf(*set)));
            }
        }
    }
    forms.params = lines.Take();
    // OCTET STRING header: one octet of length up to 127, one more for the 512-bit keys' 128.
    const std::size_t header = bits.size() > 1 && bits[1] == 0x81 ? 3 : 2;
    if (bits.size() > header && bits[0] == ca::kTagOctetString &&
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
std::wstring EcDigests(const CAsn1Block* params) {
    constexpr std::array<std::string_view, 3> kAll = {"id-sha256", "id-sha384", "id-sha512"};
    constexpr std::string_view k384[] = {"secp384r1", "brainpoolP384r1", "brainpoolP320r1"};
    constexpr std::string_view k512[] = {"secp521r1", "brainpoolP512r1"};
    const std::string_view curve = ShortNameOf(ContentIf(params, ca::kTagOid));
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

std::wstring AlgorithmText(const CAsn1Block& algorithm) {
    const Octets type = TypeOf(&algorithm);
    std::wstring text = type.empty() ? std::wstring() : OidName(type);
    if (ShortNameOf(type) == kPss) {
        const PssParams params = ReadPss(algorithm);
        text += L", " + params.digest + L", MGF1 " + params.maskDigest + L", " +
                std::to_wstring(params.saltLength);
    }
    return text;
}

std::wstring SignatureDigestText(const CAsn1Block& algorithm) {
    const std::string_view name = ShortNameOf(TypeOf(&algorithm));
    if (name == kPss) {
        return ReadPss(algorithm).digest;
    }
    const std::string_view digest = DigestOf(name);
    return digest.empty() ? std::wstring() : NameOf(digest);
}

std::wstring SignerAlgorithmText(const CAsn1Block& signature, const CAsn1Block& digest) {
    const OidInfo* info = FindOid(TypeOf(&signature));
    const bool isKeyAlone = info != nullptr && info->kind == OidKind::kKey;
    if (!isKeyAlone || TypeOf(&digest).empty()) {
        return AlgorithmText(signature);
    }
    return SetZORNAMessage(info->messageId) + std::wstring(L" ") + SetZORNAMessage(kMsgWith) +
           L' ' + OidName(TypeOf(&digest));
}

PublicKeyForms DescribePublicKey(const CAsn1Block& publicKeyInfo) {
    PublicKeyForms forms;
    const CAsn1Block* algorithm = publicKeyInfo.GetInnerBlock(0);
    const CAsn1Block* bitString = publicKeyInfo.GetInnerBlock(1);
    const Octets type = TypeOf(algorithm);
    if (type.empty() || bitString == nullptr || bitString->tag != kTagBitString) {
        forms.error = SetZORNAMessage(kMsgKeyUnreadable);
        return forms;
    }
    const CAsn1Block* params = algorithm->GetInnerBlock(1);
    const Octets bits = BitsOf(*bitString);
    const std::string_view name = ShortNameOf(type);
    forms.algorithm = AlgorithmText(*algorithm);
    forms.key = Hex(bits);
    if (name == kRsa || name == kPss) {
        constexpr std::string_view kRsaDigests[] = {"id-sha256", "id-sha384", "id-sha512"};
        DescribeRsa(bits, forms);
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
