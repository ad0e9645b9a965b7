#include "asn1/attributes/PlatformAttributes.h"

#include "asn1/FieldReader.h"

void CAsn1TpmSpecification::Decode() {
    CFieldReader fields(*this);
    m_family = fields.Required<CAsn1UTF8String>("family");
    m_level = fields.Required<CAsn1Integer>("level");
    m_revision = fields.Required<CAsn1Integer>("revision");
    fields.End();
}

void CAsn1TcgSpecificationVersion::Decode() {
    CFieldReader fields(*this);
    m_majorVersion = fields.Required<CAsn1Integer>("majorVersion");
    m_minorVersion = fields.Required<CAsn1Integer>("minorVersion");
    m_revision = fields.Required<CAsn1Integer>("revision");
    fields.End();
}

void CAsn1TcgPlatformSpecification::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1TcgSpecificationVersion>("version");
    m_platformClass = fields.RequiredAny("platformClass");
    fields.End();
}

void CAsn1TcgCredentialSpecification::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1TcgSpecificationVersion>("version");
    fields.End();
}
