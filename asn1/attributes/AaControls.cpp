#include "asn1/attributes/AaControls.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1AaControls)
