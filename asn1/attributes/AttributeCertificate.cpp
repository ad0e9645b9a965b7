#include "asn1/attributes/AttributeCertificate.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1AttCertValidityPeriod)

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

CA_ASN1_DECODE(CAsn1AttributeCertificate)
