#include "asn1/algorithms/DomainParameters.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1DssParms)
CA_ASN1_DECODE(CAsn1ValidationParms)
CA_ASN1_DECODE(CAsn1DomainParameters)
CA_ASN1_DECODE(CAsn1DhParameter)
