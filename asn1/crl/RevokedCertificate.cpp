#include "asn1/crl/RevokedCertificate.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1RevokedCertificate)
