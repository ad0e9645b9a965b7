#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"

/// PolicyMappings ::= SEQUENCE OF SEQUENCE {                   RFC 5280, 4.2.1.5
///     issuerDomainPolicy   OBJECT IDENTIFIER,
///     subjectDomainPolicy  OBJECT IDENTIFIER }
class CAsn1PolicyMapping : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("PolicyMapping");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, IssuerDomainPolicy, "issuerDomainPolicy");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, SubjectDomainPolicy, "subjectDomainPolicy");
    CA_ASN1_END;
};

/// PolicyConstraints ::= SEQUENCE {                            RFC 5280, 4.2.1.11
///     requireExplicitPolicy  [0] INTEGER OPTIONAL,
///     inhibitPolicyMapping   [1] INTEGER OPTIONAL }
class CAsn1PolicyConstraints : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("PolicyConstraints");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1Integer, RequireExplicitPolicy, "requireExplicitPolicy");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1Integer, InhibitPolicyMapping, "inhibitPolicyMapping");
    CA_ASN1_END;
};
