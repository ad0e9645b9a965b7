#include "asn1/attributes/Targets.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1TargetCert)
CA_ASN1_DECODE(CAsn1Target)
