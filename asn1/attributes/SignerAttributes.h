#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/x509/Attribute.h"

// What a signer claims to be, and what others say of him.

// ClaimedAttributes ::= SEQUENCE OF Attribute     RFC 5126, 5.11.3
using CAsn1ClaimedAttributes = CAsn1SequenceOf<CAsn1Attribute>;

// SignerAttribute ::= SEQUENCE OF CHOICE {
//     claimedAttributes    [0] ClaimedAttributes,
//     certifiedAttributes  [1] AttributeCertificate }     RFC 5126, 5.11.3
// This class is the CHOICE. The tags are explicit.
class CAsn1SignerAttribute : public CAsn1TypedObject {
    CA_ASN1_CHOICE("SignerAttribute");
    CA_ASN1_ALTERNATIVE_EXPLICIT(0, CAsn1ClaimedAttributes, ClaimedAttributes, "claimedAttributes");
    CA_ASN1_ALTERNATIVE_EXPLICIT(1, CAsn1Any, CertifiedAttributes, "certifiedAttributes");
    CA_ASN1_END;
};

// CertifiedAttributesV2 ::= SEQUENCE OF CHOICE {
//     attributeCertificate       [0] AttributeCertificate,
//     otherAttributeCertificate  [1] SEQUENCE { id OBJECT IDENTIFIER, value ANY OPTIONAL } }
//                                                            ETSI EN 319 122-1, 5.2.6.1
// This class is the CHOICE. The tags are explicit.
class CAsn1CertifiedAttributeV2 : public CAsn1TypedObject {
    CA_ASN1_CHOICE("CertifiedAttributesV2");
    CA_ASN1_ALTERNATIVE_EXPLICIT(0, CAsn1Any, AttributeCertificate, "attributeCertificate");
    CA_ASN1_ALTERNATIVE_EXPLICIT(1, CAsn1Any, OtherAttributeCertificate,
                                 "otherAttributeCertificate");
    CA_ASN1_END;
};

// SignerAttributeV2 ::= SEQUENCE {
//     claimedAttributes      [0] ClaimedAttributes OPTIONAL,
//     certifiedAttributesV2  [1] CertifiedAttributesV2 OPTIONAL,
//     signedAssertions       [2] SEQUENCE OF SignedAssertion OPTIONAL }
//                                                            ETSI EN 319 122-1, 5.2.6.1
// The tags are explicit.
class CAsn1SignerAttributeV2 : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("SignerAttributeV2");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1ClaimedAttributes, ClaimedAttributes, "claimedAttributes");
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1SequenceOf<CAsn1CertifiedAttributeV2>, CertifiedAttributes,
                              "certifiedAttributesV2");
    CA_ASN1_OPTIONAL_EXPLICIT(2, CAsn1SequenceOf<CAsn1Any>, SignedAssertions, "signedAssertions");
    CA_ASN1_END;
};
