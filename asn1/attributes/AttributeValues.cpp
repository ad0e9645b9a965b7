#include "asn1/attributes/AttributeValues.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1IetfAttrSyntax)
CA_ASN1_DECODE(CAsn1SvceAuthInfo)
CA_ASN1_DECODE(CAsn1RoleSyntax)

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
    // RFC 3281, 4.4.6, tagged the members; X.501 and RFC 5755, 4.4.6, do not.
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
