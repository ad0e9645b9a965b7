#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"
#include "asn1/Asn1Typed.h"

// TelephoneNumberRange ::= SEQUENCE {
//     start  TelephoneNumber,     -- IA5String
//     count  INTEGER }     RFC 8226, 9
class CAsn1TelephoneNumberRange : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("TelephoneNumberRange");
    CA_ASN1_REQUIRED(CAsn1IA5String, Start, "start");
    CA_ASN1_REQUIRED(CAsn1Integer, Count, "count");
    CA_ASN1_END;
};

// TNEntry ::= CHOICE {
//     spc    [0] EXPLICIT ServiceProviderCode,     -- IA5String
//     range  [1] EXPLICIT TelephoneNumberRange,
//     one    [2] EXPLICIT TelephoneNumber }     RFC 8226, 9
class CAsn1TnEntry : public CAsn1TypedObject {
    CA_ASN1_CHOICE("TNEntry");
    CA_ASN1_ALTERNATIVE_EXPLICIT(0, CAsn1IA5String, Spc, "spc");
    CA_ASN1_ALTERNATIVE_EXPLICIT(1, CAsn1TelephoneNumberRange, Range, "range");
    CA_ASN1_ALTERNATIVE_EXPLICIT(2, CAsn1IA5String, One, "one");
    CA_ASN1_END;
};
