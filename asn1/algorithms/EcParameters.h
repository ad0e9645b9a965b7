#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// Characteristic-two ::= SEQUENCE {
//     m           INTEGER,
//     basis       OBJECT IDENTIFIER,
//     parameters  ANY DEFINED BY basis }     RFC 3279, 2.3.5
class CAsn1CharacteristicTwo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("Characteristic-two");
    /// The degree: the size of the field in bits.
    CA_ASN1_REQUIRED(CAsn1Integer, M, "m");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, Basis, "basis");
    CA_ASN1_REQUIRED(CAsn1Any, Parameters, "parameters");
    CA_ASN1_END;
};

// FieldID ::= SEQUENCE {
//     fieldType   OBJECT IDENTIFIER,
//     parameters  ANY DEFINED BY fieldType }     RFC 3279, 2.3.5
class CAsn1FieldId : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("FieldID");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, FieldType, "fieldType");
    /// An INTEGER, the prime; a Characteristic-two for a field of 2^m elements.
    CA_ASN1_REQUIRED(CAsn1Any, Parameters, "parameters");
    CA_ASN1_END;
};

// Curve ::= SEQUENCE {
//     a     FieldElement,     -- OCTET STRING
//     b     FieldElement,
//     seed  BIT STRING OPTIONAL }     RFC 3279, 2.3.5
class CAsn1Curve : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("Curve");
    CA_ASN1_REQUIRED(CAsn1OctetString, A, "a");
    CA_ASN1_REQUIRED(CAsn1OctetString, B, "b");
    CA_ASN1_OPTIONAL(CAsn1BitString, Seed, "seed");
    CA_ASN1_END;
};

// ECParameters ::= SEQUENCE {
//     version   ECPVer,     -- INTEGER
//     fieldID   FieldID,
//     curve     Curve,
//     base      ECPoint,     -- OCTET STRING
//     order     INTEGER,
//     cofactor  INTEGER OPTIONAL }     RFC 3279, 2.3.5
// SpecifiedECDomain is the same with one member more (SEC 1, C.2):
//     hash      HashAlgorithm OPTIONAL     -- AlgorithmIdentifier
class CAsn1EcParameters : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ECParameters");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1FieldId, FieldId, "fieldID");
    CA_ASN1_REQUIRED(CAsn1Curve, Curve, "curve");
    CA_ASN1_REQUIRED(CAsn1OctetString, Base, "base");
    CA_ASN1_REQUIRED(CAsn1Integer, Order, "order");
    CA_ASN1_OPTIONAL(CAsn1Integer, Cofactor, "cofactor");
    /// Only in a SpecifiedECDomain.
    CA_ASN1_OPTIONAL(CAsn1AlgorithmIdentifier, Hash, "hash");
    CA_ASN1_END;
};

// EcpkParameters ::= CHOICE {
//     ecParameters  ECParameters,
//     namedCurve    OBJECT IDENTIFIER,
//     implicitlyCA  NULL }     RFC 3279, 2.3.5
// Certificates of today have named curves only (RFC 5480, 2.1.1).
class CAsn1EcpkParameters : public CAsn1TypedObject {
    CA_ASN1_CHOICE("EcpkParameters");
    CA_ASN1_ALTERNATIVE(CAsn1EcParameters, EcParameters, "ecParameters");
    CA_ASN1_ALTERNATIVE(CAsn1ObjectIdentifier, NamedCurve, "namedCurve");
    CA_ASN1_ALTERNATIVE(CAsn1Null, ImplicitlyCa, "implicitlyCA");
    CA_ASN1_END;
};
