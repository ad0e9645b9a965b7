#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"

// AAControls ::= SEQUENCE {
//     pathLenConstraint  INTEGER (0..MAX) OPTIONAL,
//     permittedAttrs     [0] AttrSpec OPTIONAL,
//     excludedAttrs      [1] AttrSpec OPTIONAL,
//     permitUnSpecified  BOOLEAN DEFAULT TRUE }
// AttrSpec ::= SEQUENCE OF OBJECT IDENTIFIER     RFC 5755, 7.4
class CAsn1AaControls : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("AAControls");
    CA_ASN1_OPTIONAL(CAsn1Integer, PathLenConstraint, "pathLenConstraint");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1SequenceOf<CAsn1ObjectIdentifier>, PermittedAttrs,
                              "permittedAttrs");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1SequenceOf<CAsn1ObjectIdentifier>, ExcludedAttrs,
                              "excludedAttrs");
    CA_ASN1_DEFAULT(PermitsUnspecified, "permitUnSpecified", true);
    CA_ASN1_END;
};
