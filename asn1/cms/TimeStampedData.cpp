#include "asn1/cms/TimeStampedData.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1MetaData)
CA_ASN1_DECODE(CAsn1TimeStampAndCrl)
CA_ASN1_DECODE(CAsn1OtherEvidence)
CA_ASN1_DECODE(CAsn1Evidence)
CA_ASN1_DECODE(CAsn1TimeStampedData)
