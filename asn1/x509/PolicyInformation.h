#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"

/// NoticeReference ::= SEQUENCE {                              RFC 5280, 4.2.1.4
///     organization   DisplayText,
///     noticeNumbers  SEQUENCE OF INTEGER }
class CAsn1NoticeReference : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("NoticeReference");
    CA_ASN1_REQUIRED(CAsn1Any, Organization, "organization");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1Integer>, NoticeNumbers, "noticeNumbers");
    CA_ASN1_END;
};

/// UserNotice ::= SEQUENCE {                                   RFC 5280, 4.2.1.4
///     noticeRef     NoticeReference OPTIONAL,
///     explicitText  DisplayText OPTIONAL }
class CAsn1UserNotice : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("UserNotice");
    CA_ASN1_OPTIONAL(CAsn1NoticeReference, NoticeRef, "noticeRef");
    CA_ASN1_OPTIONAL(CAsn1Any, ExplicitText, "explicitText");
    CA_ASN1_END;
};

/// PolicyQualifierInfo ::= SEQUENCE {                          RFC 5280, 4.2.1.4
///     policyQualifierId  OBJECT IDENTIFIER,
///     qualifier          ANY DEFINED BY policyQualifierId }
class CAsn1PolicyQualifierInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("PolicyQualifierInfo");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, PolicyQualifierId, "policyQualifierId");
    CA_ASN1_REQUIRED(CAsn1Any, Qualifier, "qualifier");
    CA_ASN1_END;
};

/// PolicyInformation ::= SEQUENCE {                            RFC 5280, 4.2.1.4
///     policyIdentifier  OBJECT IDENTIFIER,
///     policyQualifiers  SEQUENCE OF PolicyQualifierInfo OPTIONAL }
class CAsn1PolicyInformation : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("PolicyInformation");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, PolicyIdentifier, "policyIdentifier");
    CA_ASN1_OPTIONAL(CAsn1SequenceOf<CAsn1PolicyQualifierInfo>, PolicyQualifiers,
                     "policyQualifiers");
    CA_ASN1_END;
};
