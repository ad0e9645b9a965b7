#include "asn1/x509/CertificateTemplate.h"

#include "asn1/FieldReader.h"

void CAsn1CertificateTemplate::Decode() {
    CFieldReader fields(*this);
    m_templateID = fields.Required<CAsn1ObjectIdentifier>("templateID");
    m_templateMajorVersion = fields.Optional<CAsn1Integer>("templateMajorVersion");
    m_templateMinorVersion = fields.Optional<CAsn1Integer>("templateMinorVersion");
    fields.End();
}
