#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Typed.h"
#include "asn1/x509/GeneralName.h"

// EntrustVersInfoSyntax ::= SEQUENCE {
//     entrustVers       GeneralString,
//     entrustInfoFlags  EntrustInfoFlags OPTIONAL }
// EntrustInfoFlags ::= BIT STRING {
//     keyUpdateAllowed(0), newExtensions(1), pKIXCertificate(2), enterpriseCategory(3),
//     webCategory(4), sETCategory(5) }     Entrust PKI
class CAsn1EntrustVersInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("EntrustVersInfo");
    CA_ASN1_REQUIRED(CAsn1Any, EntrustVers, "entrustVers");
    CA_ASN1_OPTIONAL(CAsn1BitString, EntrustInfoFlags, "entrustInfoFlags");
    CA_ASN1_END;
};

// Timestamp ::= SEQUENCE {
//     version       INTEGER { v1(1) },
//     location      GeneralName,
//     requiresAuth  BOOLEAN DEFAULT FALSE }     ISO 32000-2, 12.8.3.3.3
class CAsn1AdobeTimestamp : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("AdobeTimestamp");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1GeneralName, Location, "location");
    CA_ASN1_DEFAULT(RequiresAuth, "requiresAuth", false);
    CA_ASN1_END;
};

// ArchiveRevInfo ::= SEQUENCE {
//     version  INTEGER { v1(1) } }     ISO 32000-2, 12.8.3.3.3
class CAsn1AdobeArchiveRevInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("AdobeArchiveRevInfo");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_END;
};
