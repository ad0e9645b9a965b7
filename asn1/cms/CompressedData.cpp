#include "asn1/cms/CompressedData.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1CompressedData)
