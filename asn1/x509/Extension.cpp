#include "asn1/x509/Extension.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1Extension)
