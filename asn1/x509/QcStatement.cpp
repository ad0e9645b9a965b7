#include "asn1/x509/QcStatement.h"

#include "asn1/FieldReader.h"

void CAsn1QcStatement::Decode() {
    CFieldReader fields(*this);
    m_statementId = fields.Required<CAsn1ObjectIdentifier>("statementId");
    m_statementInfo = fields.Optional<CAsn1Any>("statementInfo");
    fields.End();
}

void CAsn1SemanticsInformation::Decode() {
    CFieldReader fields(*this);
    m_semanticsIdentifier = fields.Optional<CAsn1ObjectIdentifier>("semanticsIdentifier");
    m_nameRegistrationAuthorities =
        fields.Optional<CAsn1SequenceOf<CAsn1Any>>("nameRegistrationAuthorities");
    fields.End();
}

void CAsn1MonetaryValue::Decode() {
    CFieldReader fields(*this);
    m_currency = fields.Required<CAsn1Any>("currency");
    m_amount = fields.Required<CAsn1Integer>("amount");
    m_exponent = fields.Required<CAsn1Integer>("exponent");
    fields.End();
}

void CAsn1PdsLocation::Decode() {
    CFieldReader fields(*this);
    m_url = fields.Required<CAsn1IA5String>("url");
    m_language = fields.Required<CAsn1PrintableString>("language");
    fields.End();
}

void CAsn1RoleOfPsp::Decode() {
    CFieldReader fields(*this);
    m_roleOfPspOid = fields.Required<CAsn1ObjectIdentifier>("roleOfPspOid");
    m_roleOfPspName = fields.Required<CAsn1UTF8String>("roleOfPspName");
    fields.End();
}

void CAsn1Psd2QcType::Decode() {
    CFieldReader fields(*this);
    m_rolesOfPSP = fields.Required<CAsn1SequenceOf<CAsn1RoleOfPsp>>("rolesOfPSP");
    m_nCAName = fields.Required<CAsn1UTF8String>("nCAName");
    m_nCAId = fields.Required<CAsn1UTF8String>("nCAId");
    fields.End();
}
