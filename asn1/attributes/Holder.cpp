#include "asn1/attributes/Holder.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1IssuerSerial)
CA_ASN1_DECODE(CAsn1ObjectDigestInfo)
CA_ASN1_DECODE(CAsn1Holder)
