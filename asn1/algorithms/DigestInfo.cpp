#include "asn1/algorithms/DigestInfo.h"

#include "asn1/FieldReader.h"

void CAsn1DigestInfo::Decode() {
    CFieldReader fields(*this);
    m_digestAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("digestAlgorithm");
    m_digest = fields.Required<CAsn1OctetString>("digest");
    fields.End();
}
