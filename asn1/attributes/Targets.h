#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/attributes/Holder.h"

// TargetCert ::= SEQUENCE {
//     targetCertificate  IssuerSerial,
//     targetName         GeneralName OPTIONAL,
//     certDigestInfo     ObjectDigestInfo OPTIONAL }     RFC 5755, 4.3.2
class CAsn1TargetCert : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("TargetCert");
    CA_ASN1_REQUIRED(CAsn1IssuerSerial, TargetCertificate, "targetCertificate");
    CA_ASN1_OPTIONAL(CAsn1GeneralName, TargetName, "targetName");
    CA_ASN1_OPTIONAL(CAsn1ObjectDigestInfo, CertDigestInfo, "certDigestInfo");
    CA_ASN1_END;
};

// Target ::= CHOICE {
//     targetName   [0] GeneralName,     -- explicit: a CHOICE
//     targetGroup  [1] GeneralName,
//     targetCert   [2] TargetCert }     RFC 5755, 4.3.2
class CAsn1Target : public CAsn1TypedObject {
    CA_ASN1_CHOICE("Target");
    CA_ASN1_ALTERNATIVE_EXPLICIT(0, CAsn1GeneralName, TargetName, "targetName");
    CA_ASN1_ALTERNATIVE_EXPLICIT(1, CAsn1GeneralName, TargetGroup, "targetGroup");
    CA_ASN1_ALTERNATIVE_IMPLICIT(2, CAsn1TargetCert, TargetCert, "targetCert");
    CA_ASN1_END;
};

// Targets ::= SEQUENCE OF Target     RFC 5755, 4.3.2
using CAsn1Targets = CAsn1SequenceOf<CAsn1Target>;
