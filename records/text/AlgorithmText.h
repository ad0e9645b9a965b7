#pragma once

#include "asn1/views/AlgorithmViews.h"

#include <string>

class CAsn1EcpkParameters;
class CAsn1Integer;

namespace ca {

struct OidInfo;

/// The readable name of an AlgorithmIdentifier (RFC 5280, 4.1.1.2); the dotted text of an unknown
/// one. RSA-PSS with its parameters: "RSA-PSS, SHA-256, MGF1 SHA-256, 32" (RFC 4055, 3.1).
std::wstring AlgorithmText(const CAsn1AlgorithmView& algorithm);

/// A signature algorithm in words.
struct SignatureAlgorithmForms {
    std::wstring text;    ///< AlgorithmText()
    std::wstring digest;  ///< the name of the digest it works with; "" when it is not known
    std::wstring error;   ///< what is wrong with its parameters; empty when nothing is
};
SignatureAlgorithmForms DescribeSignatureAlgorithm(const CAsn1AlgorithmView& algorithm);

/// The digest that a signature or key algorithm always works with; null when it is not known.
const OidInfo* DigestOf(const OidInfo& algorithm);

/// The signature algorithm of a message's signer: a key algorithm alone, as CMS allows, is
/// completed by the digest ("RSA with SHA-256").
std::wstring SignerAlgorithmText(const CAsn1AlgorithmView& signature,
                                 const CAsn1AlgorithmView& digest);

/// A SubjectPublicKeyInfo in words.
struct PublicKeyForms {
    std::wstring algorithm;
    std::wstring key;       ///< hexadecimal; for GOST the octets inside (RFC 9215, 4)
    std::wstring params;    ///< size and exponent, size, curve, or sets, one a line
    std::wstring hashAlgs;  ///< digests that go with the key, best first, ", " between them
    std::wstring error;     ///< what could not be read; empty when all could
};
PublicKeyForms DescribePublicKey(const CAsn1PublicKeyInfoView& publicKeyInfo);

/// What the algorithm of a key says by itself: `key` is empty, and so is the size of RSA.
PublicKeyForms DescribeKeyAlgorithm(const CAsn1AlgorithmView& algorithm);

/// "2048 bit", the size of a modulus; "" for null.
std::wstring SizeText(const CAsn1Integer* modulus);
/// "2048 bit, exponent 65537".
std::wstring RsaSizeText(const CAsn1Integer* modulus, const CAsn1Integer* exponent);
/// The name of a curve, or the size of the field of one that is given by its numbers; "" for
/// parameters that are inherited.
std::wstring CurveText(const CAsn1EcpkParameters& curve);

}  // namespace ca
