#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Typed.h"

// GCMParameters ::= SEQUENCE {
//     aes-nonce   OCTET STRING,
//     aes-ICVlen  AES-GCM-ICVlen DEFAULT 12 }   -- INTEGER     RFC 5084, 3.2
// CCMParameters (3.1) is the same.
class CAsn1GcmParameters : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("GCMParameters");
    CA_ASN1_REQUIRED(CAsn1OctetString, Nonce, "aes-nonce");
    /// Octets of the integrity check value; null for 12.
    CA_ASN1_OPTIONAL(CAsn1Integer, IcvLen, "aes-ICVlen");
    CA_ASN1_END;
};

using CAsn1CcmParameters = CAsn1GcmParameters;

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
