#include "asn1/x509/Extension.h"

#include "asn1/FieldReader.h"

void CAsn1Extension::Decode() {
    CFieldReader fields(*this);
    m_extnId = fields.Required<CAsn1ObjectIdentifier>("extnID");
    m_isCritical = fields.Default("critical", false);
    m_extnValue = fields.Required<CAsn1OctetString>("extnValue");
    fields.End();
}
