#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// How keys come from passwords.

// PBEParameter ::= SEQUENCE {
//     salt            OCTET STRING,
//     iterationCount  INTEGER }     RFC 8018, A.3
// pkcs-12PbeParams (RFC 7292, C) is the same.
class CAsn1PbeParameter : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("PBEParameter");
    CA_ASN1_REQUIRED(CAsn1OctetString, Salt, "salt");
    CA_ASN1_REQUIRED(CAsn1Integer, IterationCount, "iterationCount");
    CA_ASN1_END;
};

// CHOICE {
//     specified    OCTET STRING,
//     otherSource  AlgorithmIdentifier }     RFC 8018, A.2
class CAsn1Pbkdf2Salt : public CAsn1TypedObject {
    CA_ASN1_CHOICE("Salt");
    CA_ASN1_ALTERNATIVE(CAsn1OctetString, Specified, "specified");
    CA_ASN1_ALTERNATIVE(CAsn1AlgorithmIdentifier, OtherSource, "otherSource");
    CA_ASN1_END;
};

// PBKDF2-params ::= SEQUENCE {
//     salt            CHOICE { specified, otherSource },
//     iterationCount  INTEGER,
//     keyLength       INTEGER OPTIONAL,
//     prf             AlgorithmIdentifier DEFAULT algid-hmacWithSHA1 }     RFC 8018, A.2
class CAsn1Pbkdf2Params : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("PBKDF2-params");
    CA_ASN1_REQUIRED(CAsn1Pbkdf2Salt, Salt, "salt");
    CA_ASN1_REQUIRED(CAsn1Integer, IterationCount, "iterationCount");
    /// Octets.
    CA_ASN1_OPTIONAL(CAsn1Integer, KeyLength, "keyLength");
    /// Null for HMAC with SHA-1, the default.
    CA_ASN1_OPTIONAL(CAsn1AlgorithmIdentifier, Prf, "prf");
    CA_ASN1_END;
};

// PBES2-params ::= SEQUENCE {
//     keyDerivationFunc  AlgorithmIdentifier,
//     encryptionScheme   AlgorithmIdentifier }     RFC 8018, A.4
class CAsn1Pbes2Params : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("PBES2-params");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, KeyDerivationFunc, "keyDerivationFunc");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, EncryptionScheme, "encryptionScheme");
    CA_ASN1_END;
};

// PBMAC1-params ::= SEQUENCE {
//     keyDerivationFunc  AlgorithmIdentifier,
//     messageAuthScheme  AlgorithmIdentifier }     RFC 8018, A.5
class CAsn1Pbmac1Params : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("PBMAC1-params");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, KeyDerivationFunc, "keyDerivationFunc");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, MessageAuthScheme, "messageAuthScheme");
    CA_ASN1_END;
};

// scrypt-params ::= SEQUENCE {
//     salt                      OCTET STRING,
//     costParameter             INTEGER,
//     blockSize                 INTEGER,
//     parallelizationParameter  INTEGER,
//     keyLength                 INTEGER OPTIONAL }     RFC 7914, 7
class CAsn1ScryptParams : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("scrypt-params");
    CA_ASN1_REQUIRED(CAsn1OctetString, Salt, "salt");
    CA_ASN1_REQUIRED(CAsn1Integer, CostParameter, "costParameter");
    CA_ASN1_REQUIRED(CAsn1Integer, BlockSize, "blockSize");
    CA_ASN1_REQUIRED(CAsn1Integer, ParallelizationParameter, "parallelizationParameter");
    /// Octets.
    CA_ASN1_OPTIONAL(CAsn1Integer, KeyLength, "keyLength");
    CA_ASN1_END;
};
