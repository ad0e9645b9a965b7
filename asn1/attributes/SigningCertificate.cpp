#include "asn1/attributes/SigningCertificate.h"

#include "asn1/FieldReader.h"

void CAsn1EssCertId::Decode() {
    CFieldReader fields(*this);
    m_certHash = fields.Required<CAsn1OctetString>("certHash");
    m_issuerSerial = fields.Optional<CAsn1IssuerSerial>("issuerSerial");
    fields.End();
}

void CAsn1SigningCertificate::Decode() {
    CFieldReader fields(*this);
    m_certs = fields.Required<CAsn1SequenceOf<CAsn1EssCertId>>("certs");
    m_policies = fields.Optional<CAsn1SequenceOf<CAsn1PolicyInformation>>("policies");
    fields.End();
}

void CAsn1EssCertIdV2::Decode() {
    CFieldReader fields(*this);
    m_hashAlgorithm = fields.Optional<CAsn1AlgorithmIdentifier>("hashAlgorithm");
    m_certHash = fields.Required<CAsn1OctetString>("certHash");
    m_issuerSerial = fields.Optional<CAsn1IssuerSerial>("issuerSerial");
    fields.End();
}

void CAsn1SigningCertificateV2::Decode() {
    CFieldReader fields(*this);
    m_certs = fields.Required<CAsn1SequenceOf<CAsn1EssCertIdV2>>("certs");
    m_policies = fields.Optional<CAsn1SequenceOf<CAsn1PolicyInformation>>("policies");
    fields.End();
}

void CAsn1OtherHashAlgAndValue::Decode() {
    CFieldReader fields(*this);
    m_hashAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("hashAlgorithm");
    m_hashValue = fields.Required<CAsn1OctetString>("hashValue");
    fields.End();
}

void CAsn1OtherHash::Decode() {
    CChoiceReader choice(*this);
    m_sha1Hash = choice.Alternative<CAsn1OctetString>("sha1Hash");
    m_otherHash = choice.Alternative<CAsn1OtherHashAlgAndValue>("otherHash");
    choice.End();
}

void CAsn1OtherCertId::Decode() {
    CFieldReader fields(*this);
    m_otherCertHash = fields.Required<CAsn1OtherHash>("otherCertHash");
    m_issuerSerial = fields.Optional<CAsn1IssuerSerial>("issuerSerial");
    fields.End();
}

void CAsn1OtherSigningCertificate::Decode() {
    CFieldReader fields(*this);
    m_certs = fields.Required<CAsn1SequenceOf<CAsn1OtherCertId>>("certs");
    m_policies = fields.Optional<CAsn1SequenceOf<CAsn1PolicyInformation>>("policies");
    fields.End();
}
