#include "asn1/requests/CertificationRequest.h"

#include "asn1/FieldReader.h"

void CAsn1CertificationRequestInfo::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_subject = fields.Required<CAsn1Name>("subject");
    m_subjectPKInfo = fields.Required<CAsn1SubjectPublicKeyInfo>("subjectPKInfo");
    m_attributes = fields.OptionalImplicit<CAsn1SetOf<CAsn1Attribute>>(0, "attributes");
    fields.End();
}

void CAsn1CertificationRequest::Decode() {
    CFieldReader fields(*this);
    m_certificationRequestInfo =
        fields.Required<CAsn1CertificationRequestInfo>("certificationRequestInfo");
    m_signatureAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("signatureAlgorithm");
    m_signature = fields.Required<CAsn1BitString>("signature");
    fields.End();
}
