#include "asn1/x509/CabfExtensions.h"

#include "asn1/FieldReader.h"

void CAsn1CabfOrganizationIdentifier::Decode() {
    CFieldReader fields(*this);
    m_registrationSchemeIdentifier =
        fields.Required<CAsn1PrintableString>("registrationSchemeIdentifier");
    m_registrationCountry = fields.Required<CAsn1PrintableString>("registrationCountry");
    m_registrationStateOrProvince =
        fields.OptionalImplicit<CAsn1PrintableString>(0, "registrationStateOrProvince");
    m_registrationReference = fields.Required<CAsn1DirectoryString>("registrationReference");
    fields.End();
}

void CAsn1TorServiceDescriptorHash::Decode() {
    CFieldReader fields(*this);
    m_onionURI = fields.Required<CAsn1UTF8String>("onionURI");
    m_algorithm = fields.Required<CAsn1AlgorithmIdentifier>("algorithm");
    m_subjectPublicKeyHash = fields.Required<CAsn1BitString>("subjectPublicKeyHash");
    fields.End();
}
