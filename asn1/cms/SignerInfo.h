#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/cms/SignerIdentifier.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/Attribute.h"

// SignerInfo ::= SEQUENCE {
//     version             CMSVersion,     -- INTEGER
//     sid                 SignerIdentifier,
//     digestAlgorithm     DigestAlgorithmIdentifier,
//     signedAttrs         [0] IMPLICIT SET OF Attribute OPTIONAL,
//     signatureAlgorithm  SignatureAlgorithmIdentifier,
//     signature           SignatureValue,     -- OCTET STRING
//     unsignedAttrs       [1] IMPLICIT SET OF Attribute OPTIONAL }     RFC 5652, 5.3
// As in RFC 2315 (9.2), under other names. A countersignature (RFC 5652, 11.4) is one, too.
class CAsn1SignerInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("SignerInfo");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1SignerIdentifier, Sid, "sid");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, DigestAlgorithm, "digestAlgorithm");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1SetOf<CAsn1Attribute>, SignedAttrs, "signedAttrs");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, SignatureAlgorithm, "signatureAlgorithm");
    CA_ASN1_REQUIRED(CAsn1OctetString, Signature, "signature");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1SetOf<CAsn1Attribute>, UnsignedAttrs, "unsignedAttrs");
    CA_ASN1_END;
};
