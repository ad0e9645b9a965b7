#include "asn1/x509/AddressBlocks.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1IpAddressFamily)
CA_ASN1_DECODE(CAsn1IpAddressRange)
CA_ASN1_DECODE(CAsn1AsIdentifiers)
CA_ASN1_DECODE(CAsn1AsRange)
