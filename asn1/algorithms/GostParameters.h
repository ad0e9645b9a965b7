#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/x509/SubjectPublicKeyInfo.h"

// GostR3410-2012-PublicKeyParameters ::= SEQUENCE {
//     publicKeyParamSet   OBJECT IDENTIFIER,
//     digestParamSet      OBJECT IDENTIFIER OPTIONAL }     RFC 9215, 4
// GostR3410-94- and GostR3410-2001-PublicKeyParameters have one member more (RFC 4491, 2.3):
//     encryptionParamSet  OBJECT IDENTIFIER OPTIONAL
class CAsn1GostPublicKeyParameters : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("GostR3410-PublicKeyParameters");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, PublicKeyParamSet, "publicKeyParamSet");
    CA_ASN1_OPTIONAL(CAsn1ObjectIdentifier, DigestParamSet, "digestParamSet");
    CA_ASN1_OPTIONAL(CAsn1ObjectIdentifier, EncryptionParamSet, "encryptionParamSet");
    CA_ASN1_END;
};

// Gost28147-89-Parameters ::= SEQUENCE {
//     iv                  Gost28147-89-IV,     -- OCTET STRING, 8 octets
//     encryptionParamSet  OBJECT IDENTIFIER }     RFC 4357, Gost28147-89-EncryptionSyntax
class CAsn1Gost28147Parameters : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("Gost28147-89-Parameters");
    CA_ASN1_REQUIRED(CAsn1OctetString, Iv, "iv");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, EncryptionParamSet, "encryptionParamSet");
    CA_ASN1_END;
};

// Gost28147-89-KeyWrapParameters ::= SEQUENCE {
//     encryptionParamSet  OBJECT IDENTIFIER,
//     ukm                 OCTET STRING OPTIONAL }     RFC 4357, Gost28147-89-EncryptionSyntax
class CAsn1Gost28147KeyWrapParameters : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("Gost28147-89-KeyWrapParameters");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, EncryptionParamSet, "encryptionParamSet");
    CA_ASN1_OPTIONAL(CAsn1OctetString, Ukm, "ukm");
    CA_ASN1_END;
};

// Gost28147-89-EncryptedKey ::= SEQUENCE {
//     encryptedKey  Gost28147-89-Key,     -- OCTET STRING, 32 octets
//     maskKey       [0] IMPLICIT Gost28147-89-Key OPTIONAL,
//     macKey        Gost28147-89-MAC }   -- OCTET STRING, 4 octets
// RFC 4357, Gost28147-89-EncryptionSyntax
class CAsn1Gost28147EncryptedKey : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("Gost28147-89-EncryptedKey");
    CA_ASN1_REQUIRED(CAsn1OctetString, EncryptedKey, "encryptedKey");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1OctetString, MaskKey, "maskKey");
    CA_ASN1_REQUIRED(CAsn1OctetString, MacKey, "macKey");
    CA_ASN1_END;
};

// GostR3410-TransportParameters ::= SEQUENCE {
//     encryptionParamSet  OBJECT IDENTIFIER,
//     ephemeralPublicKey  [0] IMPLICIT SubjectPublicKeyInfo OPTIONAL,
//     ukm                 OCTET STRING }     RFC 4490, 4.2.1
class CAsn1GostTransportParameters : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("GostR3410-TransportParameters");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, EncryptionParamSet, "encryptionParamSet");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1SubjectPublicKeyInfo, EphemeralPublicKey,
                              "ephemeralPublicKey");
    CA_ASN1_REQUIRED(CAsn1OctetString, Ukm, "ukm");
    CA_ASN1_END;
};

// GostR3410-KeyTransport ::= SEQUENCE {     -- an EncryptedKey of CMS
//     sessionEncryptedKey  Gost28147-89-EncryptedKey,
//     transportParameters  [0] IMPLICIT GostR3410-TransportParameters OPTIONAL }
// RFC 4490, 4.2.1
class CAsn1GostKeyTransport : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("GostR3410-KeyTransport");
    CA_ASN1_REQUIRED(CAsn1Gost28147EncryptedKey, SessionEncryptedKey, "sessionEncryptedKey");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1GostTransportParameters, TransportParameters,
                              "transportParameters");
    CA_ASN1_END;
};
