#include "asn1/attributes/AttCertIssuer.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1V2Form)
CA_ASN1_DECODE(CAsn1AttCertIssuer)
