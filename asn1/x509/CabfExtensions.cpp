#include "asn1/x509/CabfExtensions.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1CabfOrganizationIdentifier)
CA_ASN1_DECODE(CAsn1TorServiceDescriptorHash)
