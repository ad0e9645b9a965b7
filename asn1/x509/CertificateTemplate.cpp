#include "asn1/x509/CertificateTemplate.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1CertificateTemplate)
