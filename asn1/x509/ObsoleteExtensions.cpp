#include "asn1/x509/ObsoleteExtensions.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1OldAuthorityKeyId)
CA_ASN1_DECODE(CAsn1KeyUsageRestriction)
CA_ASN1_DECODE(CAsn1OldKeyAttributes)
CA_ASN1_DECODE(CAsn1OldBasicConstraints)
