#include "asn1/x400/OrAddress.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1NumericOrPrintable)

template <unsigned char ApplicationTag>
void CAsn1TaggedDomain<ApplicationTag>::Decode() {
    CFieldReader fields(*this);
    m_value = fields.Required<CAsn1NumericOrPrintable>("value");
    fields.End();
}
template class CAsn1TaggedDomain<CAsn1CountryName::kTag>;
template class CAsn1TaggedDomain<CAsn1AdministrationDomainName::kTag>;

CA_ASN1_DECODE(CAsn1PersonalName)
CA_ASN1_DECODE(CAsn1BuiltInStandardAttributes)
CA_ASN1_DECODE(CAsn1DomainDefinedAttribute)
CA_ASN1_DECODE(CAsn1ExtensionAttribute)
CA_ASN1_DECODE(CAsn1OrAddress)
