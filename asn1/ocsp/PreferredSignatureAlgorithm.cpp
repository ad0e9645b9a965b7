#include "asn1/ocsp/PreferredSignatureAlgorithm.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1PreferredSignatureAlgorithm)
