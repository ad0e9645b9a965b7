#include "asn1/attributes/AttributeCertificate.h"

#include "asn1/FieldReader.h"

void CAsn1AttCertValidityPeriod::Decode() {
    CFieldReader fields(*this);
    m_notBeforeTime = fields.Required<CAsn1Time>("notBeforeTime");
    m_notAfterTime = fields.Required<CAsn1Time>("notAfterTime");
    fields.End();
}

void CAsn1AttributeCertificateFacts::DecodeFacts(CFieldReader& fields) {
    m_signature = fields.Required<CAsn1AlgorithmIdentifier>("signature");
    m_serialNumber = fields.Required<CAsn1Integer>("serialNumber");
    m_attCertValidityPeriod = fields.Required<CAsn1AttCertValidityPeriod>("attCertValidityPeriod");
    m_attributes = fields.Required<CAsn1SequenceOf<CAsn1Attribute>>("attributes");
    m_issuerUniqueId = fields.Optional<CAsn1BitString>("issuerUniqueID");
    m_extensions = fields.Optional<CAsn1Extensions>("extensions");
}

void CAsn1AttributeCertificateInfo::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_holder = fields.Required<CAsn1Holder>("holder");
    m_issuer = fields.Required<CAsn1AttCertIssuer>("issuer");
    DecodeFacts(fields);
    fields.End();
}

void CAsn1AttributeCertificate::Decode() {
    CFieldReader fields(*this);
    m_acInfo = fields.Required<CAsn1AttributeCertificateInfo>("acinfo");
    m_signatureAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("signatureAlgorithm");
    m_signatureValue = fields.Required<CAsn1BitString>("signatureValue");
    fields.End();
}
