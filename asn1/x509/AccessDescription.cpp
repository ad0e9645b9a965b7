#include "asn1/x509/AccessDescription.h"

#include "asn1/FieldReader.h"

void CAsn1AccessDescription::Decode() {
    CFieldReader fields(*this);
    m_accessMethod = fields.Required<CAsn1ObjectIdentifier>("accessMethod");
    m_accessLocation = fields.Required<CAsn1Any>("accessLocation");
    fields.End();
}
