#include "asn1/x400/OrAddress.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1NumericOrPrintable)
CA_ASN1_DECODE(CAsn1CountryName)
CA_ASN1_DECODE(CAsn1AdministrationDomainName)
CA_ASN1_DECODE(CAsn1PersonalName)
CA_ASN1_DECODE(CAsn1BuiltInStandardAttributes)
CA_ASN1_DECODE(CAsn1DomainDefinedAttribute)
CA_ASN1_DECODE(CAsn1ExtensionAttribute)
CA_ASN1_DECODE(CAsn1OrAddress)
