#include "asn1/x509/PrivateKeyUsagePeriod.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1PrivateKeyUsagePeriod)
