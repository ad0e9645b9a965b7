#include "asn1/x509/PolicyInformation.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1NoticeReference)
CA_ASN1_DECODE(CAsn1UserNotice)
CA_ASN1_DECODE(CAsn1PolicyQualifierInfo)
CA_ASN1_DECODE(CAsn1PolicyInformation)
