#include "asn1/ocsp/PreferredSignatureAlgorithm.h"

#include "asn1/FieldReader.h"

void CAsn1PreferredSignatureAlgorithm::Decode() {
    CFieldReader fields(*this);
    m_sigIdentifier = fields.Required<CAsn1AlgorithmIdentifier>("sigIdentifier");
    m_pubKeyAlgIdentifier = fields.Optional<CAsn1AlgorithmIdentifier>("pubKeyAlgIdentifier");
    fields.End();
}
