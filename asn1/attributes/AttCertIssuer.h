#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/attributes/Holder.h"

// V2Form ::= SEQUENCE {
//     issuerName         GeneralNames OPTIONAL,
//     baseCertificateID  [0] IssuerSerial OPTIONAL,
//     objectDigestInfo   [1] ObjectDigestInfo OPTIONAL }     RFC 5755, 4.1
class CAsn1V2Form : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("V2Form");
    CA_ASN1_OPTIONAL(CAsn1GeneralNames, IssuerName, "issuerName");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1IssuerSerial, BaseCertificateId, "baseCertificateID");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1ObjectDigestInfo, ObjectDigestInfo, "objectDigestInfo");
    CA_ASN1_END;
};

// AttCertIssuer ::= CHOICE {
//     v1Form  GeneralNames,
//     v2Form  [0] V2Form }     RFC 5755, 4.1
class CAsn1AttCertIssuer : public CAsn1TypedObject {
    CA_ASN1_CHOICE("AttCertIssuer");
    CA_ASN1_ALTERNATIVE(CAsn1GeneralNames, V1Form, "v1Form");
    CA_ASN1_ALTERNATIVE_IMPLICIT(0, CAsn1V2Form, V2Form, "v2Form");
    CA_ASN1_END;
};
