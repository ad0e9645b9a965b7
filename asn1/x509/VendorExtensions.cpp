#include "asn1/x509/VendorExtensions.h"

#include "asn1/FieldReader.h"

void CAsn1EntrustVersInfo::Decode() {
    CFieldReader fields(*this);
    m_entrustVers = fields.Required<CAsn1Any>("entrustVers");
    m_entrustInfoFlags = fields.Optional<CAsn1BitString>("entrustInfoFlags");
    fields.End();
}

void CAsn1AdobeTimestamp::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_location = fields.Required<CAsn1GeneralName>("location");
    m_requiresAuth = fields.Default("requiresAuth", false);
    fields.End();
}

void CAsn1AdobeArchiveRevInfo::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    fields.End();
}
