#include "asn1/x509/NameConstraints.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1GeneralSubtree)
CA_ASN1_DECODE(CAsn1NameConstraints)
