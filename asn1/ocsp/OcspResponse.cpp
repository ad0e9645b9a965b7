#include "asn1/ocsp/OcspResponse.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1ResponseBytes)
CA_ASN1_DECODE(CAsn1OcspResponse)
CA_ASN1_DECODE(CAsn1ResponderId)
CA_ASN1_DECODE(CAsn1RevokedInfo)
CA_ASN1_DECODE(CAsn1CertStatus)
CA_ASN1_DECODE(CAsn1SingleResponse)
CA_ASN1_DECODE(CAsn1ResponseData)
CA_ASN1_DECODE(CAsn1BasicOcspResponse)
CA_ASN1_DECODE(CAsn1CrlId)
