#include "asn1/attributes/TstInfo.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1MessageImprint)
CA_ASN1_DECODE(CAsn1Accuracy)
CA_ASN1_DECODE(CAsn1TstInfo)
