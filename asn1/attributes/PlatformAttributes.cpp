#include "asn1/attributes/PlatformAttributes.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1TpmSpecification)
CA_ASN1_DECODE(CAsn1TcgSpecificationVersion)
CA_ASN1_DECODE(CAsn1TcgPlatformSpecification)
CA_ASN1_DECODE(CAsn1TcgCredentialSpecification)
