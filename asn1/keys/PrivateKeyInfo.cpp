#include "asn1/keys/PrivateKeyInfo.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1PrivateKeyInfo)
CA_ASN1_DECODE(CAsn1EncryptedPrivateKeyInfo)
