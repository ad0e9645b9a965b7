#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Time.h"
#include "asn1/Asn1Typed.h"

// Validity ::= SEQUENCE { notBefore Time, notAfter Time }     RFC 5280, 4.1.2.5
// The times are not decoded: what a two-digit year means here is not what CAsn1UTCTime makes of it.
class CAsn1Validity : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("Validity");
    CA_ASN1_REQUIRED(CAsn1Time, NotBefore, "notBefore");
    CA_ASN1_REQUIRED(CAsn1Time, NotAfter, "notAfter");
    CA_ASN1_END;
};
