#include "asn1/x509/TbsCertificate.h"

#include "asn1/FieldReader.h"

void CAsn1TbsCertificate::Decode() {
    CFieldReader fields(*this);
    m_version = fields.OptionalExplicit<CAsn1Integer>(0, "version");
    m_serialNumber = fields.Required<CAsn1Integer>("serialNumber");
    m_signature = fields.Required<CAsn1AlgorithmIdentifier>("signature");
    m_issuer = fields.Required<CAsn1Name>("issuer");
    m_validity = fields.Required<CAsn1Validity>("validity");
    m_subject = fields.Required<CAsn1Name>("subject");
    m_subjectPublicKeyInfo = fields.Required<CAsn1SubjectPublicKeyInfo>("subjectPublicKeyInfo");
    m_issuerUniqueId = fields.OptionalImplicit<CAsn1BitString>(1, "issuerUniqueID");
    m_subjectUniqueId = fields.OptionalImplicit<CAsn1BitString>(2, "subjectUniqueID");
    m_extensions = fields.OptionalExplicit<CAsn1Extensions>(3, "extensions");
    fields.End();
}
