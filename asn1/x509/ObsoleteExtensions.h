#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/x509/PrivateKeyUsagePeriod.h"

// AuthorityKeyId ::= SEQUENCE {
//     keyIdentifier         [0] OCTET STRING OPTIONAL,
//     certIssuer            [1] ANY OPTIONAL,      -- EXPLICIT Name, or GeneralNames
//     certSerialNumber      [2] INTEGER OPTIONAL }     X.509 (1996 draft), 12.2.2.1
class CAsn1OldAuthorityKeyId : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("OldAuthorityKeyId");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1OctetString, KeyIdentifier, "keyIdentifier");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1SequenceOf<CAsn1Any>, CertIssuer, "certIssuer");
    CA_ASN1_OPTIONAL_IMPLICIT(2, CAsn1Integer, CertSerialNumber, "certSerialNumber");
    CA_ASN1_END;
};

// KeyUsageRestriction ::= SEQUENCE {
//     certPolicySet       SEQUENCE OF CertPolicyId OPTIONAL,     -- SEQUENCE OF OBJECT IDENTIFIER
//     restrictedKeyUsage  KeyUsage OPTIONAL }     X.509 (1996 draft), 12.2.2.5
class CAsn1KeyUsageRestriction : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("KeyUsageRestriction");
    CA_ASN1_OPTIONAL(CAsn1SequenceOf<CAsn1SequenceOf<CAsn1ObjectIdentifier>>, CertPolicySet,
                     "certPolicySet");
    CA_ASN1_OPTIONAL(CAsn1BitString, RestrictedKeyUsage, "restrictedKeyUsage");
    CA_ASN1_END;
};

// KeyAttributes ::= SEQUENCE {
//     keyIdentifier          OCTET STRING OPTIONAL,
//     intendedKeyUsage       KeyUsage OPTIONAL,
//     privateKeyUsagePeriod  PrivateKeyUsagePeriod OPTIONAL }     X.509 (1996
//     draft), 12.2.2
class CAsn1OldKeyAttributes : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("KeyAttributes");
    CA_ASN1_OPTIONAL(CAsn1OctetString, KeyIdentifier, "keyIdentifier");
    CA_ASN1_OPTIONAL(CAsn1BitString, IntendedKeyUsage, "intendedKeyUsage");
    CA_ASN1_OPTIONAL(CAsn1PrivateKeyUsagePeriod, PrivateKeyUsagePeriod, "privateKeyUsagePeriod");
    CA_ASN1_END;
};

// BasicConstraints ::= SEQUENCE {
//     subjectType         BIT STRING { endEntity (0), cA (1) },
//     pathLenConstraint   INTEGER OPTIONAL,
//     subtreesConstraint  ANY OPTIONAL }   -- SEQUENCE OF Name     X.509 (1996
//     draft), 12.4.2
class CAsn1OldBasicConstraints : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("OldBasicConstraints");
    /// Bit 0: end entity, bit 1: CA.
    CA_ASN1_REQUIRED(CAsn1BitString, SubjectType, "subjectType");
    CA_ASN1_OPTIONAL(CAsn1Integer, PathLenConstraint, "pathLenConstraint");
    CA_ASN1_OPTIONAL(CAsn1Any, SubtreesConstraint, "subtreesConstraint");
    CA_ASN1_END;
};
