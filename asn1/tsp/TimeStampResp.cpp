#include "asn1/tsp/TimeStampResp.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1PkiStatusInfo)
CA_ASN1_DECODE(CAsn1TimeStampResp)
