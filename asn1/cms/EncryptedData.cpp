#include "asn1/cms/EncryptedData.h"

#include "asn1/FieldReader.h"

void CAsn1EncryptedData::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_encryptedContentInfo = fields.Required<CAsn1EncryptedContentInfo>("encryptedContentInfo");
    m_unprotectedAttrs = fields.OptionalImplicit<CAsn1SetOf<CAsn1Attribute>>(1, "unprotectedAttrs");
    fields.End();
}

void CAsn1DigestedData::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_digestAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("digestAlgorithm");
    m_encapContentInfo = fields.Required<CAsn1EncapsulatedContentInfo>("encapContentInfo");
    m_digest = fields.Required<CAsn1OctetString>("digest");
    fields.End();
}
