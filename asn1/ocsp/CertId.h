#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// CertID ::= SEQUENCE {
//     hashAlgorithm   AlgorithmIdentifier,
//     issuerNameHash  OCTET STRING,     -- of the issuer's encoded name
//     issuerKeyHash   OCTET STRING,     -- of the octets of the issuer's key
//     serialNumber    CertificateSerialNumber }   -- INTEGER     RFC 6960, 4.1.1
class CAsn1CertId : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("CertID");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, HashAlgorithm, "hashAlgorithm");
    CA_ASN1_REQUIRED(CAsn1OctetString, IssuerNameHash, "issuerNameHash");
    CA_ASN1_REQUIRED(CAsn1OctetString, IssuerKeyHash, "issuerKeyHash");
    CA_ASN1_REQUIRED(CAsn1Integer, SerialNumber, "serialNumber");
    CA_ASN1_END;
};
