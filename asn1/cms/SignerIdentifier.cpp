#include "asn1/cms/SignerIdentifier.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1IssuerAndSerialNumber)
CA_ASN1_DECODE(CAsn1SignerIdentifier)
