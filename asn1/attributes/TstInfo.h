#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Time.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/Extension.h"

// MessageImprint ::= SEQUENCE {
//     hashAlgorithm  AlgorithmIdentifier,
//     hashedMessage  OCTET STRING }     RFC 3161, 2.4.1
class CAsn1MessageImprint : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("MessageImprint");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, HashAlgorithm, "hashAlgorithm");
    CA_ASN1_REQUIRED(CAsn1OctetString, HashedMessage, "hashedMessage");
    CA_ASN1_END;
};

// Accuracy ::= SEQUENCE {
//     seconds  INTEGER OPTIONAL,
//     millis   [0] INTEGER (1..999) OPTIONAL,
//     micros   [1] INTEGER (1..999) OPTIONAL }     RFC 3161, 2.4.2
class CAsn1Accuracy : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("Accuracy");
    CA_ASN1_OPTIONAL(CAsn1Integer, Seconds, "seconds");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1Integer, Millis, "millis");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1Integer, Micros, "micros");
    CA_ASN1_END;
};

// TSTInfo ::= SEQUENCE {
//     version         INTEGER,
//     policy          TSAPolicyId,     -- OBJECT IDENTIFIER
//     messageImprint  MessageImprint,
//     serialNumber    INTEGER,
//     genTime         GeneralizedTime,
//     accuracy        Accuracy OPTIONAL,
//     ordering        BOOLEAN DEFAULT FALSE,
//     nonce           INTEGER OPTIONAL,
//     tsa             [0] GeneralName OPTIONAL,     -- explicit: a CHOICE
//     extensions      [1] IMPLICIT Extensions OPTIONAL }     RFC 3161, 2.4.2
class CAsn1TstInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("TSTInfo");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, Policy, "policy");
    CA_ASN1_REQUIRED(CAsn1MessageImprint, MessageImprint, "messageImprint");
    CA_ASN1_REQUIRED(CAsn1Integer, SerialNumber, "serialNumber");
    CA_ASN1_REQUIRED(CAsn1GeneralizedTime, GenTime, "genTime");
    CA_ASN1_OPTIONAL(CAsn1Accuracy, Accuracy, "accuracy");
    CA_ASN1_DEFAULT(Ordering, "ordering", false);
    CA_ASN1_OPTIONAL(CAsn1Integer, Nonce, "nonce");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1Any, Tsa, "tsa");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1Extensions, Extensions, "extensions");
    CA_ASN1_END;
};
