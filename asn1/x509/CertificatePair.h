#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Typed.h"

// CertificatePair ::= SEQUENCE {
//     issuedToThisCA  [0] EXPLICIT Certificate OPTIONAL,
//     issuedByThisCA  [1] EXPLICIT Certificate OPTIONAL }     ITU-T X.509, 11.2.3
class CAsn1CertificatePair : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("CertificatePair");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1Any, IssuedToThisCa, "issuedToThisCA");
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1Any, IssuedByThisCa, "issuedByThisCA");
    CA_ASN1_END;
};
