#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// RSAPublicKey ::= SEQUENCE {
//     modulus         INTEGER,
//     publicExponent  INTEGER }     RFC 8017, A.1.1
class CAsn1RsaPublicKey : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("RSAPublicKey");
    CA_ASN1_REQUIRED(CAsn1Integer, Modulus, "modulus");
    CA_ASN1_REQUIRED(CAsn1Integer, PublicExponent, "publicExponent");
    CA_ASN1_END;
};

// RSASSA-PSS-params ::= SEQUENCE {
//     hashAlgorithm     [0] EXPLICIT HashAlgorithm DEFAULT sha1Identifier,
//     maskGenAlgorithm  [1] EXPLICIT MaskGenAlgorithm DEFAULT mgf1SHA1Identifier,
//     saltLength        [2] EXPLICIT INTEGER DEFAULT 20,
//     trailerField      [3] EXPLICIT INTEGER DEFAULT 1 }     RFC 4055, 3.1
// The algorithms are AlgorithmIdentifiers.
class CAsn1RsassaPssParams : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("RSASSA-PSS-params");
    /// Null for SHA-1, the default.
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1AlgorithmIdentifier, HashAlgorithm, "hashAlgorithm");
    /// Null for MGF1 with SHA-1, the default; its own parameters are those of a digest.
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1AlgorithmIdentifier, MaskGenAlgorithm, "maskGenAlgorithm");
    /// Octets; null for 20.
    CA_ASN1_OPTIONAL_EXPLICIT(2, CAsn1Integer, SaltLength, "saltLength");
    /// Null for 1, which stands for the octet 0xBC.
    CA_ASN1_OPTIONAL_EXPLICIT(3, CAsn1Integer, TrailerField, "trailerField");
    CA_ASN1_END;
};

// RSAES-OAEP-params ::= SEQUENCE {
//     hashFunc     [0] EXPLICIT AlgorithmIdentifier DEFAULT sha1Identifier,
//     maskGenFunc  [1] EXPLICIT AlgorithmIdentifier DEFAULT mgf1SHA1Identifier,
//     pSourceFunc  [2] EXPLICIT AlgorithmIdentifier DEFAULT pSpecifiedEmptyIdentifier }
// RFC 4055, 4.1
class CAsn1RsaesOaepParams : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("RSAES-OAEP-params");
    /// Null for SHA-1, the default.
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1AlgorithmIdentifier, HashFunc, "hashFunc");
    /// Null for MGF1 with SHA-1, the default.
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1AlgorithmIdentifier, MaskGenFunc, "maskGenFunc");
    /// Null for an empty label; else its parameters are the label.
    CA_ASN1_OPTIONAL_EXPLICIT(2, CAsn1AlgorithmIdentifier, PSourceFunc, "pSourceFunc");
    CA_ASN1_END;
};
