#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"
#include "asn1/Asn1Typed.h"

// Attributes that makers of trusted platform modules and of platforms give (TCG Credential
// Profiles; TCG Platform Attribute Credential Profile).

// TPMSpecification ::= SEQUENCE {
//     family    UTF8String,
//     level     INTEGER,
//     revision  INTEGER }
class CAsn1TpmSpecification : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("TPMSpecification");
    CA_ASN1_REQUIRED(CAsn1UTF8String, Family, "family");
    CA_ASN1_REQUIRED(CAsn1Integer, Level, "level");
    CA_ASN1_REQUIRED(CAsn1Integer, Revision, "revision");
    CA_ASN1_END;
};

// TCGSpecificationVersion ::= SEQUENCE {
//     majorVersion  INTEGER,
//     minorVersion  INTEGER,
//     revision      INTEGER }
class CAsn1TcgSpecificationVersion : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("TCGSpecificationVersion");
    CA_ASN1_REQUIRED(CAsn1Integer, MajorVersion, "majorVersion");
    CA_ASN1_REQUIRED(CAsn1Integer, MinorVersion, "minorVersion");
    CA_ASN1_REQUIRED(CAsn1Integer, Revision, "revision");
    CA_ASN1_END;
};

// TCGPlatformSpecification ::= SEQUENCE {
//     version        TCGSpecificationVersion,
//     platformClass  OCTET STRING }   -- 4 octets; some issuers write a text
class CAsn1TcgPlatformSpecification : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("TCGPlatformSpecification");
    CA_ASN1_REQUIRED(CAsn1TcgSpecificationVersion, Version, "version");
    CA_ASN1_REQUIRED(CAsn1Any, PlatformClass, "platformClass");
    CA_ASN1_END;
};

// TCGCredentialSpecification ::= SEQUENCE {
//     version  TCGSpecificationVersion }   -- some issuers write its members only
class CAsn1TcgCredentialSpecification : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("TCGCredentialSpecification");
    CA_ASN1_REQUIRED(CAsn1TcgSpecificationVersion, Version, "version");
    CA_ASN1_END;
};
