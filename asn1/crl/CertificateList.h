#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/crl/TbsCertList.h"

// CertificateList ::= SEQUENCE {
//     tbsCertList         TBSCertList,   -- what is signed: its Raw()
//     signatureAlgorithm  AlgorithmIdentifier,
//     signatureValue      BIT STRING }     RFC 5280, 5.1
class CAsn1CertificateList : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("CertificateList");
    CA_ASN1_REQUIRED(CAsn1TbsCertList, TbsCertList, "tbsCertList");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, SignatureAlgorithm, "signatureAlgorithm");
    CA_ASN1_REQUIRED(CAsn1BitString, SignatureValue, "signatureValue");
    CA_ASN1_END;
};
