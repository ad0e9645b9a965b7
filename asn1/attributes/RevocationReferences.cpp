#include "asn1/attributes/RevocationReferences.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1CrlIdentifier)
CA_ASN1_DECODE(CAsn1CrlValidatedId)
CA_ASN1_DECODE(CAsn1CrlListId)
CA_ASN1_DECODE(CAsn1OcspIdentifier)
CA_ASN1_DECODE(CAsn1OcspResponsesId)
CA_ASN1_DECODE(CAsn1OcspListId)
CA_ASN1_DECODE(CAsn1CrlOcspRef)
CA_ASN1_DECODE(CAsn1RevocationValues)
