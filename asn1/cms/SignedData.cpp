#include "asn1/cms/SignedData.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1SignedData)
