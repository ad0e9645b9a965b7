#include "asn1/algorithms/EcParameters.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1CharacteristicTwo)
CA_ASN1_DECODE(CAsn1FieldId)
CA_ASN1_DECODE(CAsn1Curve)
CA_ASN1_DECODE(CAsn1EcParameters)
CA_ASN1_DECODE(CAsn1EcpkParameters)
