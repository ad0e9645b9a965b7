#include "asn1/x509/ProxyCertInfo.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1ProxyPolicy)
CA_ASN1_DECODE(CAsn1ProxyCertInfo)
