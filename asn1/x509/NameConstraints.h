#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"

/// GeneralSubtree ::= SEQUENCE {                               RFC 5280, 4.2.1.10
///     base     GeneralName,
///     minimum  [0] INTEGER DEFAULT 0,
///     maximum  [1] INTEGER OPTIONAL }
class CAsn1GeneralSubtree : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("GeneralSubtree");
    CA_ASN1_REQUIRED(CAsn1Any, Base, "base");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1Integer, Minimum, "minimum");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1Integer, Maximum, "maximum");
    CA_ASN1_END;
};

/// NameConstraints ::= SEQUENCE {                              RFC 5280, 4.2.1.10
///     permittedSubtrees  [0] GeneralSubtrees OPTIONAL,
///     excludedSubtrees   [1] GeneralSubtrees OPTIONAL }
class CAsn1NameConstraints : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("NameConstraints");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1SequenceOf<CAsn1GeneralSubtree>, PermittedSubtrees,
                              "permittedSubtrees");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1SequenceOf<CAsn1GeneralSubtree>, ExcludedSubtrees,
                              "excludedSubtrees");
    CA_ASN1_END;
};
