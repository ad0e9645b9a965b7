#include "asn1/x509/Logotype.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1HashAlgAndValue)
CA_ASN1_DECODE(CAsn1LogotypeDetails)
CA_ASN1_DECODE(CAsn1LogotypeMedia)
CA_ASN1_DECODE(CAsn1LogotypeData)
CA_ASN1_DECODE(CAsn1LogotypeReference)
CA_ASN1_DECODE(CAsn1LogotypeInfo)
CA_ASN1_DECODE(CAsn1OtherLogotypeInfo)
CA_ASN1_DECODE(CAsn1LogotypeExtn)
