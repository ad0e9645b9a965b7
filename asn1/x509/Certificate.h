#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/x509/TbsCertificate.h"

// Certificate ::= SEQUENCE {
//     tbsCertificate      TBSCertificate,   -- what is signed: its Raw()
//     signatureAlgorithm  AlgorithmIdentifier,
//     signatureValue      BIT STRING }     RFC 5280, 4.1
class CAsn1Certificate : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("Certificate");
    CA_ASN1_REQUIRED(CAsn1TbsCertificate, TbsCertificate, "tbsCertificate");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, SignatureAlgorithm, "signatureAlgorithm");
    CA_ASN1_REQUIRED(CAsn1BitString, SignatureValue, "signatureValue");
    CA_ASN1_END;
};
