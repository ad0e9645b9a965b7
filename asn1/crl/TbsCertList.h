#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/crl/RevokedCertificate.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/Name.h"

// TBSCertList ::= SEQUENCE {
//     version              Version OPTIONAL,     -- INTEGER, v2 when there
//     signature            AlgorithmIdentifier,
//     issuer               Name,
//     thisUpdate           Time,
//     nextUpdate           Time OPTIONAL,
//     revokedCertificates  SEQUENCE OF RevokedCertificate OPTIONAL,
//     crlExtensions        [0] EXPLICIT Extensions OPTIONAL }     RFC 5280, 5.1
// There may be a million entries: they are not read here, only walked.
class CAsn1TbsCertList : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("TBSCertList");
    /// Null for v1, which is left out.
    CA_ASN1_OPTIONAL(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, Signature, "signature");
    CA_ASN1_REQUIRED(CAsn1Name, Issuer, "issuer");
    CA_ASN1_REQUIRED(CAsn1Time, ThisUpdate, "thisUpdate");
    CA_ASN1_OPTIONAL(CAsn1Time, NextUpdate, "nextUpdate");
    CA_ASN1_OPTIONAL(CAsn1SequenceOf<CAsn1RevokedCertificate>, RevokedCertificates,
                     "revokedCertificates");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1Extensions, CrlExtensions, "crlExtensions");
    CA_ASN1_END;
};
