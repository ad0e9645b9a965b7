#include "asn1/attributes/AttributeCertificateV1.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1AttCertSubject)
CA_ASN1_DECODE(CAsn1AttributeCertificateInfoV1)
CA_ASN1_DECODE(CAsn1AttributeCertificateV1)
