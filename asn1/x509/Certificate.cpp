#include "asn1/x509/Certificate.h"

#include "asn1/FieldReader.h"

void CAsn1Certificate::Decode() {
    CFieldReader fields(*this);
    m_tbsCertificate = fields.Required<CAsn1TbsCertificate>("tbsCertificate");
    m_signatureAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("signatureAlgorithm");
    m_signatureValue = fields.Required<CAsn1BitString>("signatureValue");
    fields.End();
}
