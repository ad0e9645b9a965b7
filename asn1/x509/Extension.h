#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"

// Extension ::= SEQUENCE {
//     extnID     OBJECT IDENTIFIER,
//     critical   BOOLEAN DEFAULT FALSE,
//     extnValue  OCTET STRING }   -- the DER of the type extnID stands for     RFC 5280, 4.1
class CAsn1Extension : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("Extension");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, ExtnId, "extnID");
    CA_ASN1_DEFAULT(IsCritical, "critical", false);
    CA_ASN1_REQUIRED(CAsn1OctetString, ExtnValue, "extnValue");
    CA_ASN1_END;
};

// Extensions ::= SEQUENCE SIZE (1..MAX) OF Extension     RFC 5280, 4.1
using CAsn1Extensions = CAsn1SequenceOf<CAsn1Extension>;
