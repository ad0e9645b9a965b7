#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Typed.h"

// ContentInfo ::= SEQUENCE {
//     contentType  ContentType,     -- OBJECT IDENTIFIER
//     content      [0] EXPLICIT ANY DEFINED BY contentType OPTIONAL }     RFC 5652, 3; RFC 2315, 7
// RFC 5652 requires the content; RFC 2315 leaves it out where it is elsewhere.
class CAsn1ContentInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ContentInfo");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, ContentType, "contentType");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1Any, Content, "content");
    CA_ASN1_END;
};

// EncapsulatedContentInfo ::= SEQUENCE {
//     eContentType  ContentType,     -- OBJECT IDENTIFIER
//     eContent      [0] EXPLICIT OCTET STRING OPTIONAL }     RFC 5652, 5.2
// In RFC 2315 (9.1) the content is of any type.
class CAsn1EncapsulatedContentInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("EncapsulatedContentInfo");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, EContentType, "eContentType");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1Any, EContent, "eContent");
    CA_ASN1_END;
};
