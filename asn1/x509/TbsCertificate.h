#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/Extension.h"
#include "asn1/x509/Name.h"
#include "asn1/x509/SubjectPublicKeyInfo.h"
#include "asn1/x509/Validity.h"

// TBSCertificate ::= SEQUENCE {
//     version          [0]  EXPLICIT Version DEFAULT v1,     -- INTEGER
//     serialNumber          CertificateSerialNumber,         -- INTEGER
//     signature             AlgorithmIdentifier,
//     issuer                Name,
//     validity              Validity,
//     subject               Name,
//     subjectPublicKeyInfo  SubjectPublicKeyInfo,
//     issuerUniqueID   [1]  IMPLICIT UniqueIdentifier OPTIONAL,     -- BIT STRING
//     subjectUniqueID  [2]  IMPLICIT UniqueIdentifier OPTIONAL,
//     extensions       [3]  EXPLICIT Extensions OPTIONAL }     RFC 5280, 4.1
class CAsn1TbsCertificate : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("TBSCertificate");
    /// Null for v1, which is left out.
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1Integer, SerialNumber, "serialNumber");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, Signature, "signature");
    CA_ASN1_REQUIRED(CAsn1Name, Issuer, "issuer");
    CA_ASN1_REQUIRED(CAsn1Validity, Validity, "validity");
    CA_ASN1_REQUIRED(CAsn1Name, Subject, "subject");
    CA_ASN1_REQUIRED(CAsn1SubjectPublicKeyInfo, SubjectPublicKeyInfo, "subjectPublicKeyInfo");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1BitString, IssuerUniqueId, "issuerUniqueID");
    CA_ASN1_OPTIONAL_IMPLICIT(2, CAsn1BitString, SubjectUniqueId, "subjectUniqueID");
    CA_ASN1_OPTIONAL_EXPLICIT(3, CAsn1Extensions, Extensions, "extensions");
    CA_ASN1_END;
};
