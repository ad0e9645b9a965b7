#include "asn1/ocsp/CertId.h"

#include "asn1/FieldReader.h"

void CAsn1CertId::Decode() {
    CFieldReader fields(*this);
    m_hashAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("hashAlgorithm");
    m_issuerNameHash = fields.Required<CAsn1OctetString>("issuerNameHash");
    m_issuerKeyHash = fields.Required<CAsn1OctetString>("issuerKeyHash");
    m_serialNumber = fields.Required<CAsn1Integer>("serialNumber");
    fields.End();
}
