#include "asn1/cms/SignerInfo.h"

#include "asn1/FieldReader.h"

void CAsn1SignerInfo::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_sid = fields.Required<CAsn1SignerIdentifier>("sid");
    m_digestAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("digestAlgorithm");
    m_signedAttrs = fields.OptionalImplicit<CAsn1SetOf<CAsn1Attribute>>(0, "signedAttrs");
    m_signatureAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("signatureAlgorithm");
    m_signature = fields.Required<CAsn1OctetString>("signature");
    m_unsignedAttrs = fields.OptionalImplicit<CAsn1SetOf<CAsn1Attribute>>(1, "unsignedAttrs");
    fields.End();
}
