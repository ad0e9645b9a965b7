#include "asn1/x509/GeneralName.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1OtherName)
CA_ASN1_DECODE(CAsn1EdiPartyName)
CA_ASN1_DECODE(CAsn1GeneralName)
