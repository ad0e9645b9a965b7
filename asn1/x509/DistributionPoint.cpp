#include "asn1/x509/DistributionPoint.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1DistributionPoint)
CA_ASN1_DECODE(CAsn1IssuingDistributionPoint)
CA_ASN1_DECODE(CAsn1AaIssuingDistributionPoint)
