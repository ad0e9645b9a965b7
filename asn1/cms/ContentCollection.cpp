#include "asn1/cms/ContentCollection.h"

#include "asn1/FieldReader.h"

void CAsn1ContentWithAttributes::Decode() {
    CFieldReader fields(*this);
    m_content = fields.Required<CAsn1ContentInfo>("content");
    m_attrs = fields.Required<CAsn1SequenceOf<CAsn1Any>>("attrs");
    fields.End();
}
