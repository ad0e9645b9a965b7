#include "asn1/x509/TnEntry.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1TelephoneNumberRange)
CA_ASN1_DECODE(CAsn1TnEntry)
