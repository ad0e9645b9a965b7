#include "asn1/crl/CertificateList.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1CertificateList)
