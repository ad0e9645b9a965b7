#include "asn1/cms/SignedData.h"

#include "asn1/FieldReader.h"

void CAsn1SignedData::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_digestAlgorithms = fields.Required<CAsn1SetOf<CAsn1AlgorithmIdentifier>>("digestAlgorithms");
    m_encapContentInfo = fields.Required<CAsn1EncapsulatedContentInfo>("encapContentInfo");
    m_certificates = fields.OptionalImplicit<CAsn1SetOf<CAsn1Any>>(0, "certificates");
    m_crls = fields.OptionalImplicit<CAsn1SetOf<CAsn1Any>>(1, "crls");
    m_signerInfos = fields.Required<CAsn1SetOf<CAsn1SignerInfo>>("signerInfos");
    fields.End();
}
