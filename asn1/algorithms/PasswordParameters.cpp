#include "asn1/algorithms/PasswordParameters.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1PbeParameter)
CA_ASN1_DECODE(CAsn1Pbkdf2Salt)
CA_ASN1_DECODE(CAsn1Pbkdf2Params)
CA_ASN1_DECODE(CAsn1Pbes2Params)
CA_ASN1_DECODE(CAsn1Pbmac1Params)
CA_ASN1_DECODE(CAsn1ScryptParams)
