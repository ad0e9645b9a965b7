#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// PreferredSignatureAlgorithm ::= SEQUENCE {
//     sigIdentifier        AlgorithmIdentifier,
//     pubKeyAlgIdentifier  SMIMECapability OPTIONAL }     RFC 6960, 4.4.7.1
// An SMIMECapability is built as an AlgorithmIdentifier. The extension is a SEQUENCE OF these.
class CAsn1PreferredSignatureAlgorithm : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("PreferredSignatureAlgorithm");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, SigIdentifier, "sigIdentifier");
    CA_ASN1_OPTIONAL(CAsn1AlgorithmIdentifier, PubKeyAlgIdentifier, "pubKeyAlgIdentifier");
    CA_ASN1_END;
};
