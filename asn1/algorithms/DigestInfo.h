#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// DigestInfo ::= SEQUENCE {
//     digestAlgorithm  AlgorithmIdentifier,
//     digest           OCTET STRING }     RFC 8017, 9.2
class CAsn1DigestInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("DigestInfo");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, DigestAlgorithm, "digestAlgorithm");
    CA_ASN1_REQUIRED(CAsn1OctetString, Digest, "digest");
    CA_ASN1_END;
};
