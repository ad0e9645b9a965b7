#include "asn1/cms/EnvelopedData.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1OriginatorInfo)
CA_ASN1_DECODE(CAsn1EncryptedContentInfo)
CA_ASN1_DECODE(CAsn1EnvelopedData)
