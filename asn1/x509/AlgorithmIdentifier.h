#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Typed.h"

// AlgorithmIdentifier ::= SEQUENCE {
//     algorithm   OBJECT IDENTIFIER,
//     parameters  ANY DEFINED BY algorithm OPTIONAL }     RFC 5280, 4.1.1.2
class CAsn1AlgorithmIdentifier : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("AlgorithmIdentifier");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, Algorithm, "algorithm");
    /// Null when there are none; a NULL when the algorithm writes its absence so.
    CA_ASN1_OPTIONAL(CAsn1Any, Parameters, "parameters");
    CA_ASN1_END;
};
