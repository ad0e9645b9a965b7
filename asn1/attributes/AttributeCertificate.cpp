#include "asn1/attributes/AttributeCertificate.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1AttCertValidityPeriod)
CA_ASN1_DECODE(CAsn1AttributeCertificateInfo)
CA_ASN1_DECODE(CAsn1AttributeCertificate)
