#include "asn1/algorithms/CipherParameters.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1Rc2CbcParameter)
