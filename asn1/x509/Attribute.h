#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"

// Attribute ::= SEQUENCE {
//     type    AttributeType,     -- OBJECT IDENTIFIER
//     values  SET OF AttributeValue }   -- ANY     RFC 5755, 4.1
class CAsn1Attribute : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("Attribute");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, Type, "type");
    CA_ASN1_REQUIRED(CAsn1SetOf<CAsn1Any>, Values, "values");
    CA_ASN1_END;
};
