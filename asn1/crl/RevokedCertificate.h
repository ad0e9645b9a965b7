#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Time.h"
#include "asn1/x509/Extension.h"

// RevokedCertificate ::= SEQUENCE {     -- the element of TBSCertList.revokedCertificates
//     userCertificate     CertificateSerialNumber,     -- INTEGER
//     revocationDate      Time,
//     crlEntryExtensions  Extensions OPTIONAL }     RFC 5280, 5.1
// The time is not decoded: as in Validity.
class CAsn1RevokedCertificate : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("RevokedCertificate");
    CA_ASN1_REQUIRED(CAsn1Integer, UserCertificate, "userCertificate");
    CA_ASN1_REQUIRED(CAsn1Time, RevocationDate, "revocationDate");
    CA_ASN1_OPTIONAL(CAsn1Extensions, CrlEntryExtensions, "crlEntryExtensions");
    CA_ASN1_END;
};
