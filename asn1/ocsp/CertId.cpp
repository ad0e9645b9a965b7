#include "asn1/ocsp/CertId.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1CertId)
