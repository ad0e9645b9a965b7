#include "records/scan/ObjectTests.h"

#include "asn1/Elements.h"
#include "asn1/OidTable.h"
#include "asn1/views/AlgorithmViews.h"
#include "asn1/views/CertificateViews.h"
#include "asn1/views/MessageViews.h"
#include "records/scan/LooksLike.h"
#include "records/scan/ObjectShape.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace {

using ca::Octets;

// Of an AlgorithmIdentifier, or of a ContentInfo, which begins alike.
const ca::OidInfo* TypeOf(const CAsn1AlgorithmView& algorithm) {
    return ca::FindOid(algorithm.Algorithm());
}

// The table of identifiers says what an identifier is for; that often tells structures apart.
bool IsOfKind(const CAsn1AlgorithmView& algorithm, ca::OidKind kind) {
    const ca::OidInfo* type = TypeOf(algorithm);
    return type != nullptr && type->kind == kind;
}

// ---- Signed messages ----

// The members of SignedData that tell messages apart (RFC 5652, 5.1).
struct SignedParts {
    bool isThere = false;
    bool hasCertificates = false;
    bool hasCrls = false;
    bool hasSigners = false;
};

SignedParts PartsOf(const CAsn1Element& object) {
    const CAsn1ContentInfoView message(object);
    // Some programs save the SignedData without the ContentInfo round it.
    const CAsn1SignedDataView data(message.HasContentType() ? message.Content() : object);
    SignedParts parts;
    parts.isThere = data.HasMembers();
    parts.hasCertificates = !data.Certificates().content.empty();
    parts.hasCrls = !data.Crls().content.empty();
    parts.hasSigners = !data.SignerInfos().content.empty();
    return parts;
}

// ---- Numbers ----

// Bits of the smallest keys that were ever in use; smaller numbers are something else.
constexpr std::size_t kLeastModulus = 256;
constexpr std::size_t kLeastSubgroup = 160;
constexpr std::size_t kMostSubgroup = 512;
constexpr std::size_t kMostSmall = 32;

struct Number {
    std::size_t bits = 0;
    std::uint32_t small = 0;  // its value, if it has at most kMostSmall bits
    bool isOdd = false;
};

Number NumberOf(const CAsn1Element& integer) {
    Number number;
    // The number itself, without the octets that keep it positive.
    Octets octets = ca::ContentIf(integer, kAsn1Integer);
    while (!octets.empty() && octets.front() == 0) {
        octets = octets.subspan(1);
    }
    if (!octets.empty()) {
        number.bits =
            8 * (octets.size() - 1) + static_cast<std::size_t>(std::bit_width(octets.front()));
        number.isOdd = (octets.back() & 1U) != 0;
        // Zero where it is longer.
        ca::ReadSmallInteger(integer, number.small);
    }
    return number;
}

// An exponent is odd, and 3, 17 or 65537 in practice; 2 and 5 are what primes are generated with.
bool IsExponent(const Number& number) {
    constexpr std::uint32_t kGenerator = 5;
    return number.isOdd && number.bits > 1 && number.bits <= kMostSmall &&
           number.small != kGenerator;
}

bool IsSubgroup(const Number& order, const Number& prime) {
    return order.isOdd && order.bits >= kLeastSubgroup && order.bits <= kMostSubgroup &&
           order.bits < prime.bits;
}

bool IsRsaKey(const CAsn1Element& object) {
    const CAsn1RsaPublicKeyView key(object);
    const Number modulus = NumberOf(key.Modulus());
    return modulus.isOdd && modulus.bits >= kLeastModulus &&
           IsExponent(NumberOf(key.PublicExponent()));
}

// A base of two numbers alone that is large could as well be the second half of a signature, which
// is never so long.
bool IsBase(const Number& base, const Number& prime) {
    constexpr std::size_t kLeastPrime = 768;
    return base.bits > 1 && base.bits <= prime.bits &&
           (base.bits <= kMostSmall || prime.bits >= kLeastPrime);
}

// ---- Signed objects ----

bool IsSignedObject(const CAsn1Element& object) {
    return ca::LooksLikeCertificate(object.raw) || ca::LooksLikeCrl(object.raw) ||
           ca::LooksLikeAttributeCertificate(object.raw);
}

}  // namespace

namespace ca {

bool IsCertificate(const CAsn1Element& object, const unsigned char* cutAt) {
    // A whole one needs no shape: the view knows its members.
    if (cutAt == nullptr || LooksLikeCertificate(object.raw)) {
        return LooksLikeCertificate(object.raw);
    }
    // One without a version begins as a list with one does, until the period tells them apart.
    const CAsn1TbsCertificateView tbs = CAsn1CertificateView(object).TbsCertificate();
    const unsigned char time = tbs.NotBefore().tag;
    return (tbs.HasVersion() || time == kAsn1UtcTime || time == kAsn1GeneralizedTime) &&
           HasShape(object, "S(S(0(I$)?IS(O)S(T*$)S(tt$)S(T*$)S(S(O)B", cutAt);
}

bool IsAttributeCertificate(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    return LooksLikeAttributeCertificate(object.raw);
}

bool IsCrl(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    // A list alone, or a message that carries lists and nothing else.
    if (ContentTypeOf(object) == nullptr) {
        return LooksLikeCrl(object.raw);
    }
    const SignedParts parts = PartsOf(object);
    return parts.hasCrls && !parts.hasCertificates && !parts.hasSigners;
}

bool HasSigners(const CAsn1Element& object, const unsigned char* cutAt) {
    const SignedParts parts = PartsOf(object);
    // A cut message may have lost its signers: without certificates it is taken for a signed one.
    return parts.hasSigners || !parts.isThere || (cutAt != nullptr && !parts.hasCertificates);
}

bool HasCertificatesOnly(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    return PartsOf(object).hasCertificates;  // HasSigners() was asked before
}

bool IsContentInfo(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    const OidInfo* type = TypeOf(object);
    // Contents of unknown types are messages too, but of a type of another kind they are none.
    return type == nullptr || type->kind == OidKind::kContentType;
}

bool IsTimeStampResponse(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    constexpr std::uint32_t kLastStatus = 5;  // RFC 3161, 2.4.2
    std::uint32_t status = 0;
    // Bounded by the highest status that is defined: two numbers begin many structures.
    return ReadSmallInteger(CAsn1TimeStampRespView(object).Status(), status) &&
           status <= kLastStatus;
}

bool IsEncryptedKey(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    const CAsn1AlgorithmView scheme = CAsn1EncryptedKeyView(object).EncryptionAlgorithm();
    // An unknown scheme with parameters is one of encryption rather than a digest, which has none.
    return IsOfKind(scheme, OidKind::kCipher) ||
           (TypeOf(scheme) == nullptr && scheme.Parameters().tag == kAsn1Sequence);
}

bool IsPublicKey(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    const CAsn1AlgorithmView algorithm = CAsn1PublicKeyInfoView(object).Algorithm();
    if (algorithm.Element().tag == kAsn1Integer) {
        return IsRsaKey(object);
    }
    // A digest or a cipher with a BIT STRING is not a key.
    return !IsOfKind(algorithm, OidKind::kDigest) && !IsOfKind(algorithm, OidKind::kCipher);
}

bool IsDsaGroup(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    const CAsn1DssParmsView group(object);
    const Number prime = NumberOf(group.P());
    const Number order = NumberOf(group.Q());
    const Number generator = NumberOf(group.G());
    // A generator of the subgroup is about as large as the prime.
    return prime.isOdd && IsSubgroup(order, prime) && generator.bits > order.bits;
}

bool IsDhGroup(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    const CAsn1DhGroupView group(object);
    const Number prime = NumberOf(group.Prime());
    const Number third = NumberOf(group.LengthOrOrder());
    const bool hasThird = group.LengthOrOrder().tag == kAsn1Integer;
    return prime.isOdd && prime.bits >= kLeastModulus && IsBase(NumberOf(group.Base()), prime) &&
           (!hasThird || third.bits <= kMostSmall || IsSubgroup(third, prime));
}

bool IsCurve(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    const OidInfo* type = FindOid(ContentIf(object, kAsn1ObjectIdentifier));
    return object.tag == kAsn1Sequence || (type != nullptr && type->kind == OidKind::kCurve);
}

bool IsCertificatePair(const CAsn1Element& object, const unsigned char* cutAt) {
    const CAsn1CertificatePairView pair(object);
    return cutAt != nullptr || (IsSignedObject(pair.First().Element()) &&
                                (!pair.HasSecond() || IsSignedObject(pair.Second().Element())));
}

bool IsCertificatePath(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    // Members that are looked at: looking at all of them would cost as much as describing them.
    constexpr std::size_t kLookedAt = 8;
    CAsn1Element member;
    std::size_t count = 0;
    for (CAsn1Cursor cursor(object.content); count < kLookedAt && cursor.StepOrRest(member);
         ++count) {
        if (!IsSignedObject(member)) {
            return false;
        }
    }
    return count != 0;
}

bool IsAlgorithm(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    constexpr OidKind kKinds[] = {
        OidKind::kSignature,     OidKind::kDigest,  OidKind::kKey,
        OidKind::kKeyAgreement,  OidKind::kKeyWrap, OidKind::kMac,
        OidKind::kKeyDerivation, OidKind::kCipher,  OidKind::kCompression};
    const OidInfo* type = TypeOf(object);
    return type != nullptr && std::ranges::find(kKinds, type->kind) != std::end(kKinds) &&
           (CAsn1AlgorithmView(object).Parameters().tag & kAsn1ContextBit) == 0;
}

const OidInfo* ContentTypeOf(const CAsn1Element& object) {
    const OidInfo* type = TypeOf(object);
    const CAsn1ContentInfoView view(object);
    // A content without the tag [0] is of another structure that begins with an identifier.
    const bool isContentInfo = object.tag == kAsn1Sequence && type != nullptr &&
                               type->kind == OidKind::kContentType &&
                               (!view.HasContent() || view.IsContentTagged());
    return isContentInfo ? type : nullptr;
}

}  // namespace ca
