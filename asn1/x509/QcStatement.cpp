#include "asn1/x509/QcStatement.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1QcStatement)
CA_ASN1_DECODE(CAsn1SemanticsInformation)
CA_ASN1_DECODE(CAsn1MonetaryValue)
CA_ASN1_DECODE(CAsn1PdsLocation)
CA_ASN1_DECODE(CAsn1RoleOfPsp)
CA_ASN1_DECODE(CAsn1Psd2QcType)
