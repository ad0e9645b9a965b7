#include "asn1/cms/ContentCollection.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1ContentWithAttributes)
