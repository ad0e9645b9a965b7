#include "asn1/cms/CompressedData.h"

#include "asn1/FieldReader.h"

void CAsn1CompressedData::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_compressionAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("compressionAlgorithm");
    m_encapContentInfo = fields.Required<CAsn1EncapsulatedContentInfo>("encapContentInfo");
    fields.End();
}
