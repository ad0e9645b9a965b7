#include "asn1/algorithms/RsaParameters.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1RsaPublicKey)
CA_ASN1_DECODE(CAsn1RsassaPssParams)
CA_ASN1_DECODE(CAsn1RsaesOaepParams)
