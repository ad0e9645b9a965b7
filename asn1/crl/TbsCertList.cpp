#include "asn1/crl/TbsCertList.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1TbsCertList)
