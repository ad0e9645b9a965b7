#include "asn1/x509/Name.h"

#include "asn1/FieldReader.h"

void CAsn1AttributeTypeAndValue::Decode() {
    CFieldReader fields(*this);
    m_type = fields.Required<CAsn1ObjectIdentifier>("type");
    m_value = fields.RequiredAny("value");
    fields.End();
}
