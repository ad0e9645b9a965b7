#include "asn1/attributes/SignerAttributes.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1SignerAttribute)
CA_ASN1_DECODE(CAsn1CertifiedAttributeV2)
CA_ASN1_DECODE(CAsn1SignerAttributeV2)
