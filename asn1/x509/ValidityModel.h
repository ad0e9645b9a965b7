#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Typed.h"

// ValidityModel ::= SEQUENCE {
//     validityModelId    OBJECT IDENTIFIER,
//     validityModelInfo  ANY DEFINED BY validityModelId OPTIONAL }
// Extension of the root certificates of German signature law.
class CAsn1ValidityModel : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ValidityModel");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, ValidityModelId, "validityModelId");
    CA_ASN1_OPTIONAL(CAsn1Any, ValidityModelInfo, "validityModelInfo");
    CA_ASN1_END;
};
