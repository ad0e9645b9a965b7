#include "records/objects/ObjectTests.h"

#include "asn1/Elements.h"
#include "asn1/OidTable.h"
#include "records/AttrCertInfoFill.h"
#include "records/CertInfoFill.h"
#include "records/CrlInfoFill.h"
#include "records/objects/ObjectShape.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace {

using ca::Child;
using ca::Octets;

const ca::OidInfo* TypeOf(const CAsn1Element& algorithm) {
    return ca::FindOid(ca::ContentIf(Child(algorithm, 0), kAsn1ObjectIdentifier));
}

bool IsOfKind(const CAsn1Element& algorithm, ca::OidKind kind) {
    const ca::OidInfo* type = TypeOf(algorithm);
    return type != nullptr && type->kind == kind;
}

// ---- Signed messages ----

// The members of SignedData that tell messages apart (RFC 5652 5.1).
struct SignedParts {
    bool isThere = false;
    bool hasCertificates = false;
    bool hasCrls = false;
    bool hasSigners = false;
};

SignedParts PartsOf(const CAsn1Element& object) {
    constexpr std::size_t kBehindContent = 3;
    SignedParts parts;
    const bool isContentInfo = Child(object, 0).tag == kAsn1ObjectIdentifier;
    const CAsn1Element message = isContentInfo ? Child(Child(object, 1), 0) : object;
    CAsn1Element member;
    std::size_t index = 0;
    for (CAsn1Cursor cursor(message.content);
         !cursor.AtEnd() && cursor.Next(member) == Asn1Fault::kNone; ++index) {
        const bool isEmpty = member.content.empty();
        if (index < kBehindContent) {
            parts.isThere = true;
        } else if (member.tag == ca::ContextConstructed(0)) {
            parts.hasCertificates = !isEmpty;
        } else if (member.tag == ca::ContextConstructed(1)) {
            parts.hasCrls = !isEmpty;
        } else {
            parts.hasSigners = !isEmpty;
        }
    }
    return parts;
}

// ---- Numbers ----

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
    Octets octets = ca::ContentIf(integer, kAsn1Integer);
    while (!octets.empty() && octets.front() == 0) {
        octets = octets.subspan(1);
    }
    if (!octets.empty()) {
        number.bits =
            8 * (octets.size() - 1) + static_cast<std::size_t>(std::bit_width(octets.front()));
        number.isOdd = (octets.back() & 1U) != 0;
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
    const Number modulus = NumberOf(Child(object, 0));
    return modulus.isOdd && modulus.bits >= kLeastModulus && IsExponent(NumberOf(Child(object, 1)));
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
    if (cutAt == nullptr || LooksLikeCertificate(object.raw)) {
        return LooksLikeCertificate(object.raw);
    }
    // One without a version begins as a list with one does, until the period tells them apart.
    const CAsn1Element tbs = Child(object, 0);
    const std::size_t serial = Child(tbs, 0).tag == ContextConstructed(0) ? 1 : 0;
    const unsigned char time = Child(Child(tbs, serial + 3), 0).tag;
    return (serial != 0 || time == kAsn1UtcTime || time == kAsn1GeneralizedTime) &&
           HasShape(object, "S(S(0(I$)?IS(O)S(T*$)S(tt$)S(T*$)S(S(O)B", cutAt);
}

bool IsAttributeCertificate(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    return LooksLikeAttributeCertificate(object.raw);
}

bool IsCrl(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    if (ContentTypeOf(object) == nullptr) {
        return LooksLikeCrl(object.raw);
    }
    const SignedParts parts = PartsOf(object);
    return parts.hasCrls && !parts.hasCertificates && !parts.hasSigners;
}

bool HasSigners(const CAsn1Element& object, const unsigned char* cutAt) {
    const SignedParts parts = PartsOf(object);
    return parts.hasSigners || !parts.isThere || (cutAt != nullptr && !parts.hasCertificates);
}

bool HasCertificatesOnly(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    return PartsOf(object).hasCertificates;  // HasSigners() was asked before
}

bool IsContentInfo(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    const OidInfo* type = TypeOf(object);
    return type == nullptr || type->kind == OidKind::kContentType;
}

bool IsTimeStampResponse(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    constexpr std::uint32_t kLastStatus = 5;  // RFC 3161, 2.4.2
    std::uint32_t status = 0;
    return ReadSmallInteger(Child(Child(object, 0), 0), status) && status <= kLastStatus;
}

bool IsEncryptedKey(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    const CAsn1Element scheme = Child(object, 0);
    return IsOfKind(scheme, OidKind::kCipher) ||
           (TypeOf(scheme) == nullptr && Child(scheme, 1).tag == kAsn1Sequence);
}

bool IsPublicKey(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    const CAsn1Element algorithm = Child(object, 0);
    if (algorithm.tag == kAsn1Integer) {
        return IsRsaKey(object);
    }
    return !IsOfKind(algorithm, OidKind::kDigest) && !IsOfKind(algorithm, OidKind::kCipher);
}

bool IsDsaGroup(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    const Number prime = NumberOf(Child(object, 0));
    const Number order = NumberOf(Child(object, 1));
    const Number generator = NumberOf(Child(object, 2));
    return prime.isOdd && IsSubgroup(order, prime) && generator.bits > order.bits;
}

bool IsDhGroup(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    const Number prime = NumberOf(Child(object, 0));
    const Number third = NumberOf(Child(object, 2));
    const bool hasThird = Child(object, 2).tag == kAsn1Integer;
    return prime.isOdd && prime.bits >= kLeastModulus &&
           IsBase(NumberOf(Child(object, 1)), prime) &&
           (!hasThird || third.bits <= kMostSmall || IsSubgroup(third, prime));
}

bool IsCurve(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    const OidInfo* type = FindOid(ContentIf(object, kAsn1ObjectIdentifier));
    return object.tag == kAsn1Sequence || (type != nullptr && type->kind == OidKind::kCurve);
}

bool IsCertificatePair(const CAsn1Element& object, const unsigned char* cutAt) {
    return cutAt != nullptr ||
           (IsSignedObject(Child(Child(object, 0), 0)) &&
            (Child(object, 1).raw.empty() || IsSignedObject(Child(Child(object, 1), 0))));
}

bool IsCertificatePath(const CAsn1Element& object, const unsigned char* /*cutAt*/) {
    constexpr std::size_t kLookedAt = 8;
    CAsn1Element member;
    std::size_t count = 0;
    for (CAsn1Cursor cursor(object.content); !cursor.AtEnd() && count < kLookedAt; ++count) {
        if (cursor.Next(member) != Asn1Fault::kNone || !IsSignedObject(member)) {
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
           (Child(object, 1).tag & kAsn1ContextBit) == 0;
}

const OidInfo* ContentTypeOf(const CAsn1Element& object) {
    const OidInfo* type = TypeOf(object);
    const bool isContentInfo =
        object.tag == kAsn1Sequence && type != nullptr && type->kind == OidKind::kContentType &&
        (Child(object, 1).raw.empty() || Child(object, 1).tag == ContextConstructed(0));
    return isContentInfo ? type : nullptr;
}

}  // namespace ca
