#include "asn1/x509/PolicyInformation.h"

#include "asn1/FieldReader.h"

void CAsn1NoticeReference::Decode() {
    CFieldReader fields(*this);
    m_organization = fields.Required<CAsn1Any>("organization");
    m_noticeNumbers = fields.Required<CAsn1SequenceOf<CAsn1Integer>>("noticeNumbers");
    fields.End();
}

void CAsn1UserNotice::Decode() {
    CFieldReader fields(*this);
    m_noticeRef = fields.Optional<CAsn1NoticeReference>("noticeRef");
    m_explicitText = fields.Optional<CAsn1Any>("explicitText");
    fields.End();
}

void CAsn1PolicyQualifierInfo::Decode() {
    CFieldReader fields(*this);
    m_policyQualifierId = fields.Required<CAsn1ObjectIdentifier>("policyQualifierId");
    m_qualifier = fields.Required<CAsn1Any>("qualifier");
    fields.End();
}

void CAsn1PolicyInformation::Decode() {
    CFieldReader fields(*this);
    m_policyIdentifier = fields.Required<CAsn1ObjectIdentifier>("policyIdentifier");
    m_policyQualifiers =
        fields.Optional<CAsn1SequenceOf<CAsn1PolicyQualifierInfo>>("policyQualifiers");
    fields.End();
}
