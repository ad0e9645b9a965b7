#include "asn1/x509/Name.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1AttributeTypeAndValue)
