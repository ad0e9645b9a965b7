#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Typed.h"

// The groups that keys of DSA and Diffie-Hellman live in, and the signature values they give.

// Dss-Parms ::= SEQUENCE {
//     p  INTEGER,
//     q  INTEGER,
//     g  INTEGER }     RFC 3279, 2.3.2
class CAsn1DssParms : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("Dss-Parms");
    CA_ASN1_REQUIRED(CAsn1Integer, P, "p");
    CA_ASN1_REQUIRED(CAsn1Integer, Q, "q");
    CA_ASN1_REQUIRED(CAsn1Integer, G, "g");
    CA_ASN1_END;
};

// ValidationParms ::= SEQUENCE {
//     seed         BIT STRING,
//     pgenCounter  INTEGER }     RFC 3279, 2.3.3
class CAsn1ValidationParms : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ValidationParms");
    CA_ASN1_REQUIRED(CAsn1BitString, Seed, "seed");
    CA_ASN1_REQUIRED(CAsn1Integer, PgenCounter, "pgenCounter");
    CA_ASN1_END;
};

// DomainParameters ::= SEQUENCE {
//     p                INTEGER,
//     g                INTEGER,
//     q                INTEGER,
//     j                INTEGER OPTIONAL,
//     validationParms  ValidationParms OPTIONAL }     RFC 3279, 2.3.3
class CAsn1DomainParameters : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("DomainParameters");
    CA_ASN1_REQUIRED(CAsn1Integer, P, "p");
    CA_ASN1_REQUIRED(CAsn1Integer, G, "g");
    CA_ASN1_REQUIRED(CAsn1Integer, Q, "q");
    CA_ASN1_OPTIONAL(CAsn1Integer, J, "j");
    CA_ASN1_OPTIONAL(CAsn1ValidationParms, ValidationParms, "validationParms");
    CA_ASN1_END;
};

// DHParameter ::= SEQUENCE {
//     prime               INTEGER,
//     base                INTEGER,
//     privateValueLength  INTEGER OPTIONAL }     PKCS #3, 9
class CAsn1DhParameter : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("DHParameter");
    CA_ASN1_REQUIRED(CAsn1Integer, Prime, "prime");
    CA_ASN1_REQUIRED(CAsn1Integer, Base, "base");
    /// Bits.
    CA_ASN1_OPTIONAL(CAsn1Integer, PrivateValueLength, "privateValueLength");
    CA_ASN1_END;
};
