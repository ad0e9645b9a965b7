#include "asn1/x400/OrAddress.h"

#include "asn1/FieldReader.h"

void CAsn1NumericOrPrintable::Decode() {
    CChoiceReader choice(*this);
    m_numeric = choice.Alternative<CAsn1NumericString>("numeric");
    m_printable = choice.Alternative<CAsn1PrintableString>("printable");
    choice.End();
}

template <unsigned char ApplicationTag>
void CAsn1TaggedDomain<ApplicationTag>::Decode() {
    CFieldReader fields(*this);
    m_value = fields.Required<CAsn1NumericOrPrintable>("value");
    fields.End();
}
template class CAsn1TaggedDomain<CAsn1CountryName::kTag>;
template class CAsn1TaggedDomain<CAsn1AdministrationDomainName::kTag>;

void CAsn1PersonalName::Decode() {
    CFieldReader fields(*this);
    m_surname = fields.RequiredImplicit<CAsn1PrintableString>(0, "surname");
    m_givenName = fields.OptionalImplicit<CAsn1PrintableString>(1, "given-name");
    m_initials = fields.OptionalImplicit<CAsn1PrintableString>(2, "initials");
    m_generationQualifier =
        fields.OptionalImplicit<CAsn1PrintableString>(3, "generation-qualifier");
    fields.End();
}

void CAsn1BuiltInStandardAttributes::Decode() {
    CFieldReader fields(*this);
    m_countryName = fields.Optional<CAsn1CountryName>("country-name");
    m_administration = fields.Optional<CAsn1AdministrationDomainName>("administration-domain-name");
    m_networkAddress = fields.OptionalImplicit<CAsn1NumericString>(0, "network-address");
    m_terminalIdentifier = fields.OptionalImplicit<CAsn1PrintableString>(1, "terminal-identifier");
    m_privateDomainName =
        fields.OptionalExplicit<CAsn1NumericOrPrintable>(2, "private-domain-name");
    m_organizationName = fields.OptionalImplicit<CAsn1PrintableString>(3, "organization-name");
    m_numericUserIdentifier =
        fields.OptionalImplicit<CAsn1NumericString>(4, "numeric-user-identifier");
    m_personalName = fields.OptionalImplicit<CAsn1PersonalName>(5, "personal-name");
    m_organizationalUnitNames = fields.OptionalImplicit<CAsn1SequenceOf<CAsn1PrintableString>>(
        6, "organizational-unit-names");
    fields.End();
}

void CAsn1DomainDefinedAttribute::Decode() {
    CFieldReader fields(*this);
    m_type = fields.Required<CAsn1PrintableString>("type");
    m_value = fields.Required<CAsn1PrintableString>("value");
    fields.End();
}

void CAsn1ExtensionAttribute::Decode() {
    CFieldReader fields(*this);
    m_type = fields.RequiredImplicit<CAsn1Integer>(0, "extension-attribute-type");
    m_value = fields.RequiredExplicit<CAsn1Any>(1, "extension-attribute-value");
    fields.End();
}

void CAsn1OrAddress::Decode() {
    CFieldReader fields(*this);
    m_standard = fields.Required<CAsn1BuiltInStandardAttributes>("built-in-standard-attributes");
    m_domainDefined = fields.Optional<CAsn1SequenceOf<CAsn1DomainDefinedAttribute>>(
        "built-in-domain-defined-attributes");
    m_extensions = fields.Optional<CAsn1SetOf<CAsn1ExtensionAttribute>>("extension-attributes");
    fields.End();
}
