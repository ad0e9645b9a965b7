#include "asn1/attributes/Attribute.h"

#include "asn1/FieldReader.h"

void CAsn1Attribute::Decode() {
    CFieldReader fields(*this);
    m_type = fields.Required<CAsn1ObjectIdentifier>("type");
    m_values = fields.Required<CAsn1SetOf<CAsn1Any>>("values");
    fields.End();
}
