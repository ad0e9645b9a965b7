#include "asn1/requests/CertificationRequest.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1CertificationRequestInfo)
CA_ASN1_DECODE(CAsn1CertificationRequest)
