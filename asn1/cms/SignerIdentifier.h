#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/x509/Name.h"

// IssuerAndSerialNumber ::= SEQUENCE {
//     issuer        Name,
//     serialNumber  CertificateSerialNumber }   -- INTEGER     RFC 5652, 10.2.4
class CAsn1IssuerAndSerialNumber : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("IssuerAndSerialNumber");
    CA_ASN1_REQUIRED(CAsn1Name, Issuer, "issuer");
    CA_ASN1_REQUIRED(CAsn1Integer, SerialNumber, "serialNumber");
    CA_ASN1_END;
};

// SignerIdentifier ::= CHOICE {
//     issuerAndSerialNumber  IssuerAndSerialNumber,
//     subjectKeyIdentifier   [0] SubjectKeyIdentifier }   -- OCTET STRING     RFC 5652, 5.3
// RecipientIdentifier (RFC 5652, 6.2.1) is the same.
class CAsn1SignerIdentifier : public CAsn1TypedObject {
    CA_ASN1_CHOICE("SignerIdentifier");
    CA_ASN1_ALTERNATIVE(CAsn1IssuerAndSerialNumber, IssuerAndSerialNumber, "issuerAndSerialNumber");
    CA_ASN1_ALTERNATIVE_IMPLICIT(0, CAsn1OctetString, SubjectKeyIdentifier, "subjectKeyIdentifier");
    CA_ASN1_END;
};
