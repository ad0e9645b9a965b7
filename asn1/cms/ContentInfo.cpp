#include "asn1/cms/ContentInfo.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1ContentInfo)
CA_ASN1_DECODE(CAsn1EncapsulatedContentInfo)
