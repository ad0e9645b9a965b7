#include "asn1/x509/Attribute.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1Attribute)
