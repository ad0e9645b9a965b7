#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"

/// NoticeReference ::= SEQUENCE {                              RFC 5280, 4.2.1.4
///     organization   DisplayText,
///     noticeNumbers  SEQUENCE OF INTEGER }
class CAsn1NoticeReference : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "NoticeReference";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Any* Organization() const { return m_organization; }
    const CAsn1SequenceOf<CAsn1Integer>* NoticeNumbers() const { return m_noticeNumbers; }

  private:
    CAsn1Any* m_organization = nullptr;
    CAsn1SequenceOf<CAsn1Integer>* m_noticeNumbers = nullptr;
};

/// UserNotice ::= SEQUENCE {                                   RFC 5280, 4.2.1.4
///     noticeRef     NoticeReference OPTIONAL,
///     explicitText  DisplayText OPTIONAL }
class CAsn1UserNotice : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "UserNotice";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1NoticeReference* NoticeRef() const { return m_noticeRef; }
    const CAsn1Any* ExplicitText() const { return m_explicitText; }

  private:
    CAsn1NoticeReference* m_noticeRef = nullptr;
    CAsn1Any* m_explicitText = nullptr;
};

/// PolicyQualifierInfo ::= SEQUENCE {                          RFC 5280, 4.2.1.4
///     policyQualifierId  OBJECT IDENTIFIER,
///     qualifier          ANY DEFINED BY policyQualifierId }
class CAsn1PolicyQualifierInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "PolicyQualifierInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ObjectIdentifier* PolicyQualifierId() const { return m_policyQualifierId; }
    const CAsn1Any* Qualifier() const { return m_qualifier; }

  private:
    CAsn1ObjectIdentifier* m_policyQualifierId = nullptr;
    CAsn1Any* m_qualifier = nullptr;
};

/// PolicyInformation ::= SEQUENCE {                            RFC 5280, 4.2.1.4
///     policyIdentifier  OBJECT IDENTIFIER,
///     policyQualifiers  SEQUENCE OF PolicyQualifierInfo OPTIONAL }
class CAsn1PolicyInformation : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "PolicyInformation";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ObjectIdentifier* PolicyIdentifier() const { return m_policyIdentifier; }
    const CAsn1SequenceOf<CAsn1PolicyQualifierInfo>* PolicyQualifiers() const {
        return m_policyQualifiers;
    }

  private:
    CAsn1ObjectIdentifier* m_policyIdentifier = nullptr;
    CAsn1SequenceOf<CAsn1PolicyQualifierInfo>* m_policyQualifiers = nullptr;
};
