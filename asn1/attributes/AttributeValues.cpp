#include "asn1/attributes/AttributeValues.h"

#include "asn1/FieldReader.h"

void CAsn1IetfAttrSyntax::Decode() {
    CFieldReader fields(*this);
    m_policyAuthority = fields.OptionalImplicit<CAsn1GeneralNames>(0, "policyAuthority");
    m_values = fields.Required<CAsn1SequenceOf<CAsn1Any>>("values");
    fields.End();
}

void CAsn1SvceAuthInfo::Decode() {
    CFieldReader fields(*this);
    m_service = fields.Required<CAsn1GeneralName>("service");
    m_ident = fields.Required<CAsn1GeneralName>("ident");
    m_authInfo = fields.Optional<CAsn1OctetString>("authInfo");
    fields.End();
}

void CAsn1RoleSyntax::Decode() {
    CFieldReader fields(*this);
    m_roleAuthority = fields.OptionalImplicit<CAsn1GeneralNames>(0, "roleAuthority");
    m_roleName = fields.RequiredExplicit<CAsn1GeneralName>(1, "roleName");
    fields.End();
}

void CAsn1SecurityCategory::Decode() {
    CFieldReader fields(*this);
    m_type = fields.RequiredImplicit<CAsn1ObjectIdentifier>(0, "type");
    m_value = fields.OptionalExplicit<CAsn1Any>(1, "value");
    if (m_value == nullptr) {
        m_value = fields.RequiredAny("value");
    }
    fields.End();
}

void CAsn1Clearance::Decode() {
    CFieldReader fields(*this);
    m_policyId = fields.OptionalImplicit<CAsn1ObjectIdentifier>(0, "policyId");
    if (m_policyId != nullptr) {
        m_classList = fields.OptionalImplicit<CAsn1BitString>(1, "classList");
        m_securityCategories =
            fields.OptionalImplicit<CAsn1SetOf<CAsn1SecurityCategory>>(2, "securityCategories");
    } else {
        m_policyId = fields.Required<CAsn1ObjectIdentifier>("policyId");
        m_classList = fields.Optional<CAsn1BitString>("classList");
        m_securityCategories =
            fields.Optional<CAsn1SetOf<CAsn1SecurityCategory>>("securityCategories");
    }
    fields.End();
}
