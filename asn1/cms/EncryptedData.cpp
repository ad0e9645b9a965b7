#include "asn1/cms/EncryptedData.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1EncryptedData)
CA_ASN1_DECODE(CAsn1DigestedData)
