#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// SubjectPublicKeyInfo ::= SEQUENCE {
//     algorithm         AlgorithmIdentifier,
//     subjectPublicKey  BIT STRING }     RFC 5280, 4.1.2.7
class CAsn1SubjectPublicKeyInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("SubjectPublicKeyInfo");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, Algorithm, "algorithm");
    CA_ASN1_REQUIRED(CAsn1BitString, SubjectPublicKey, "subjectPublicKey");
    CA_ASN1_END;
};
