#include "asn1/cmp/PkiMessage.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1PkiHeader)
CA_ASN1_DECODE(CAsn1PkiMessage)
