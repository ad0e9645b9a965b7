#include "asn1/ocsp/OcspRequest.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1OcspSingleRequest)
CA_ASN1_DECODE(CAsn1TbsOcspRequest)
CA_ASN1_DECODE(CAsn1OcspSignature)
CA_ASN1_DECODE(CAsn1OcspRequest)
CA_ASN1_DECODE(CAsn1ServiceLocator)
