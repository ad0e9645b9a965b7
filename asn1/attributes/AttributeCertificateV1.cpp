#include "asn1/attributes/AttributeCertificateV1.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1AttCertSubject)

void CAsn1AttributeCertificateInfoV1::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Optional<CAsn1Integer>("version");
    m_subject = fields.Required<CAsn1AttCertSubject>("subject");
    m_issuer = fields.Required<CAsn1GeneralNames>("issuer");
    DecodeFacts(fields);
    fields.End();
}

CA_ASN1_DECODE(CAsn1AttributeCertificateV1)
