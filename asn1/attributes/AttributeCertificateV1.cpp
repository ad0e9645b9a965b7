#include "asn1/attributes/AttributeCertificateV1.h"

#include "asn1/FieldReader.h"

void CAsn1AttCertSubject::Decode() {
    CChoiceReader choice(*this);
    m_baseCertificateId = choice.Explicit<CAsn1IssuerSerial>(0, "baseCertificateID");
    m_subjectName = choice.Explicit<CAsn1GeneralNames>(1, "subjectName");
    choice.End();
}

void CAsn1AttributeCertificateInfoV1::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Optional<CAsn1Integer>("version");
    m_subject = fields.Required<CAsn1AttCertSubject>("subject");
    m_issuer = fields.Required<CAsn1GeneralNames>("issuer");
    DecodeFacts(fields);
    fields.End();
}

void CAsn1AttributeCertificateV1::Decode() {
    CFieldReader fields(*this);
    m_acInfo = fields.Required<CAsn1AttributeCertificateInfoV1>("acInfo");
    m_signatureAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("signatureAlgorithm");
    m_signature = fields.Required<CAsn1BitString>("signature");
    fields.End();
}
