#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"

/// BasicConstraints ::= SEQUENCE {                             RFC 5280, 4.2.1.9
///     cA                 BOOLEAN DEFAULT FALSE,
///     pathLenConstraint  INTEGER (0..MAX) OPTIONAL }
class CAsn1BasicConstraints : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("BasicConstraints");
    CA_ASN1_DEFAULT(IsCa, "cA", false);
    CA_ASN1_OPTIONAL(CAsn1Integer, PathLenConstraint, "pathLenConstraint");
    CA_ASN1_END;
};
