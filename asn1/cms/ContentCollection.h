#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/cms/ContentInfo.h"
#include "asn1/x509/Attribute.h"

// ContentWithAttributes ::= SEQUENCE {
//     content  ContentInfo,
//     attrs    SEQUENCE OF Attribute }     RFC 4073, 3
// A ContentCollection (2) is a SEQUENCE OF ContentInfo.
class CAsn1ContentWithAttributes : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ContentWithAttributes");
    CA_ASN1_REQUIRED(CAsn1ContentInfo, Content, "content");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1Any>, Attrs, "attrs");
    CA_ASN1_END;
};
