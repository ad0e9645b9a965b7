#pragma once

#include "asn1/Asn1Element.h"

#include <string_view>

// What tells kinds of objects apart where their shapes do not; ObjectTest of the table. They look
// at a few elements, never deeper than their code is.

namespace ca {

struct OidInfo;

bool IsCertificate(const CAsn1Element& object, const unsigned char* cutAt);
bool IsAttributeCertificate(const CAsn1Element& object, const unsigned char* cutAt);
/// A list, or a message that carries lists only.
bool IsCrl(const CAsn1Element& object, const unsigned char* cutAt);
/// Of a signed message (RFC 5652, 5.1), with or without its ContentInfo.
bool HasSigners(const CAsn1Element& object, const unsigned char* cutAt);
bool HasCertificatesOnly(const CAsn1Element& object, const unsigned char* cutAt);
bool IsContentInfo(const CAsn1Element& object, const unsigned char* cutAt);
bool IsTimeStampResponse(const CAsn1Element& object, const unsigned char* cutAt);
bool IsEncryptedKey(const CAsn1Element& object, const unsigned char* cutAt);
/// A SubjectPublicKeyInfo, or two numbers that can be a key of RSA.
bool IsPublicKey(const CAsn1Element& object, const unsigned char* cutAt);
/// Numbers of the sizes that groups of DSA and of Diffie-Hellman have.
bool IsDsaGroup(const CAsn1Element& object, const unsigned char* cutAt);
bool IsDhGroup(const CAsn1Element& object, const unsigned char* cutAt);
bool IsCurve(const CAsn1Element& object, const unsigned char* cutAt);
bool IsCertificatePair(const CAsn1Element& object, const unsigned char* cutAt);
bool IsCertificatePath(const CAsn1Element& object, const unsigned char* cutAt);
bool IsAlgorithm(const CAsn1Element& object, const unsigned char* cutAt);

/// The type of a ContentInfo (RFC 5652, 3); null for anything else and for one of no row.
const OidInfo* ContentTypeOf(const CAsn1Element& object);

}  // namespace ca
