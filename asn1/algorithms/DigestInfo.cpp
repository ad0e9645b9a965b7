#include "asn1/algorithms/DigestInfo.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1DigestInfo)
