#include "asn1/cms/ContentInfo.h"

#include "asn1/FieldReader.h"

void CAsn1ContentInfo::Decode() {
    CFieldReader fields(*this);
    m_contentType = fields.Required<CAsn1ObjectIdentifier>("contentType");
    m_content = fields.OptionalExplicit<CAsn1Any>(0, "content");
    fields.End();
}

void CAsn1EncapsulatedContentInfo::Decode() {
    CFieldReader fields(*this);
    m_eContentType = fields.Required<CAsn1ObjectIdentifier>("eContentType");
    m_eContent = fields.OptionalExplicit<CAsn1Any>(0, "eContent");
    fields.End();
}
