#include "asn1/cms/SignerInfo.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1SignerInfo)
