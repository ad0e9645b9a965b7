#include "asn1/algorithms/GostParameters.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1GostPublicKeyParameters)
CA_ASN1_DECODE(CAsn1Gost28147Parameters)
CA_ASN1_DECODE(CAsn1Gost28147KeyWrapParameters)
CA_ASN1_DECODE(CAsn1Gost28147EncryptedKey)
CA_ASN1_DECODE(CAsn1GostTransportParameters)
CA_ASN1_DECODE(CAsn1GostKeyTransport)
