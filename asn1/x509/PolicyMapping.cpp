#include "asn1/x509/PolicyMapping.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1PolicyMapping)
CA_ASN1_DECODE(CAsn1PolicyConstraints)
