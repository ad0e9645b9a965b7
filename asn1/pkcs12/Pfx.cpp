#include "asn1/pkcs12/Pfx.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1MacData)
CA_ASN1_DECODE(CAsn1Pfx)
CA_ASN1_DECODE(CAsn1SafeBag)
CA_ASN1_DECODE(CAsn1TypedBag)
