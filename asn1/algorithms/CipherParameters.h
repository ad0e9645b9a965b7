#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Typed.h"

// RC2CBCParameter ::= SEQUENCE {
//     rc2ParameterVersion  INTEGER OPTIONAL,
//     iv                   OCTET STRING }     RFC 8018, B.2.3; RFC 3370, 5.2
class CAsn1Rc2CbcParameter : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("RC2CBCParameter");
    /// Names the effective key bits: 160 stands for 40, 120 for 64, 58 for 128, 256 and more for
    /// themselves; null for 32.
    CA_ASN1_OPTIONAL(CAsn1Integer, Rc2ParameterVersion, "rc2ParameterVersion");
    CA_ASN1_REQUIRED(CAsn1OctetString, Iv, "iv");
    CA_ASN1_END;
};
