#include "asn1/x509/AlgorithmIdentifier.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1AlgorithmIdentifier)
