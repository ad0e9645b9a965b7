#include "asn1/attributes/Attribute.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1Attribute)
