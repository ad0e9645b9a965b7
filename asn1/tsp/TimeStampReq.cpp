#include "asn1/tsp/TimeStampReq.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1TimeStampReq)
