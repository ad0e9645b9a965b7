#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Time.h"

/// PrivateKeyUsagePeriod ::= SEQUENCE {                        RFC 3280, 4.2.1.4
///     notBefore  [0] GeneralizedTime OPTIONAL,
///     notAfter   [1] GeneralizedTime OPTIONAL }
class CAsn1PrivateKeyUsagePeriod : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("PrivateKeyUsagePeriod");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1GeneralizedTime, NotBefore, "notBefore");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1GeneralizedTime, NotAfter, "notAfter");
    CA_ASN1_END;
};
