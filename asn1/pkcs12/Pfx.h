#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/algorithms/DigestInfo.h"
#include "asn1/cms/ContentInfo.h"
#include "asn1/x509/Attribute.h"

// MacData ::= SEQUENCE {
//     mac         DigestInfo,
//     macSalt     OCTET STRING,
//     iterations  INTEGER DEFAULT 1 }     RFC 7292, 4
class CAsn1MacData : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("MacData");
    CA_ASN1_REQUIRED(CAsn1DigestInfo, Mac, "mac");
    CA_ASN1_REQUIRED(CAsn1OctetString, MacSalt, "macSalt");
    /// Null for 1.
    CA_ASN1_OPTIONAL(CAsn1Integer, Iterations, "iterations");
    CA_ASN1_END;
};

// PFX ::= SEQUENCE {
//     version   INTEGER,
//     authSafe  ContentInfo,     -- its content: SEQUENCE OF ContentInfo
//     macData   MacData OPTIONAL }     RFC 7292, 4
class CAsn1Pfx : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("PFX");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1ContentInfo, AuthSafe, "authSafe");
    CA_ASN1_OPTIONAL(CAsn1MacData, MacData, "macData");
    CA_ASN1_END;
};

// SafeBag ::= SEQUENCE {
//     bagId          OBJECT IDENTIFIER,
//     bagValue       [0] EXPLICIT ANY DEFINED BY bagId,
//     bagAttributes  SET OF PKCS12Attribute OPTIONAL }     RFC 7292, 4.2
// An attribute is built as one of X.501. SafeContents is a SEQUENCE OF these.
class CAsn1SafeBag : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("SafeBag");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, BagId, "bagId");
    CA_ASN1_REQUIRED_EXPLICIT(0, CAsn1Any, BagValue, "bagValue");
    CA_ASN1_OPTIONAL(CAsn1SetOf<CAsn1Attribute>, BagAttributes, "bagAttributes");
    CA_ASN1_END;
};

// CertBag ::= SEQUENCE {
//     certId     OBJECT IDENTIFIER,
//     certValue  [0] EXPLICIT ANY DEFINED BY certId }     RFC 7292, 4.2.3
// CRLBag (4.2.4) and SecretBag (4.2.5) are the same.
class CAsn1TypedBag : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("CertBag");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, Type, "certId");
    CA_ASN1_REQUIRED_EXPLICIT(0, CAsn1Any, Value, "certValue");
    CA_ASN1_END;
};
