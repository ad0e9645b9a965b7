#include "asn1/crl/CertificateList.h"

#include "asn1/FieldReader.h"

void CAsn1CertificateList::Decode() {
    CFieldReader fields(*this);
    m_tbsCertList = fields.Required<CAsn1TbsCertList>("tbsCertList");
    m_signatureAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("signatureAlgorithm");
    m_signatureValue = fields.Required<CAsn1BitString>("signatureValue");
    fields.End();
}
