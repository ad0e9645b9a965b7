#include "asn1/x509/VendorExtensions.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1EntrustVersInfo)
CA_ASN1_DECODE(CAsn1AdobeTimestamp)
CA_ASN1_DECODE(CAsn1AdobeArchiveRevInfo)
