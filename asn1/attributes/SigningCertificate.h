#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/attributes/Holder.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/PolicyInformation.h"

// ESSCertID ::= SEQUENCE {
//     certHash      Hash,     -- OCTET STRING, SHA-1
//     issuerSerial  IssuerSerial OPTIONAL }     RFC 5035, 5
class CAsn1EssCertId : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ESSCertID");
    CA_ASN1_REQUIRED(CAsn1OctetString, CertHash, "certHash");
    CA_ASN1_OPTIONAL(CAsn1IssuerSerial, IssuerSerial, "issuerSerial");
    CA_ASN1_END;
};

// SigningCertificate ::= SEQUENCE {
//     certs     SEQUENCE OF ESSCertID,
//     policies  SEQUENCE OF PolicyInformation OPTIONAL }     RFC 5035, 5
class CAsn1SigningCertificate : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("SigningCertificate");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1EssCertId>, Certs, "certs");
    CA_ASN1_OPTIONAL(CAsn1SequenceOf<CAsn1PolicyInformation>, Policies, "policies");
    CA_ASN1_END;
};

// ESSCertIDv2 ::= SEQUENCE {
//     hashAlgorithm  AlgorithmIdentifier DEFAULT {id-sha256},
//     certHash       Hash,     -- OCTET STRING
//     issuerSerial   IssuerSerial OPTIONAL }     RFC 5035, 4
class CAsn1EssCertIdV2 : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ESSCertIDv2");
    /// Null for SHA-256, the default.
    CA_ASN1_OPTIONAL(CAsn1AlgorithmIdentifier, HashAlgorithm, "hashAlgorithm");
    CA_ASN1_REQUIRED(CAsn1OctetString, CertHash, "certHash");
    CA_ASN1_OPTIONAL(CAsn1IssuerSerial, IssuerSerial, "issuerSerial");
    CA_ASN1_END;
};

// SigningCertificateV2 ::= SEQUENCE {
//     certs     SEQUENCE OF ESSCertIDv2,
//     policies  SEQUENCE OF PolicyInformation OPTIONAL }     RFC 5035, 3
class CAsn1SigningCertificateV2 : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("SigningCertificateV2");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1EssCertIdV2>, Certs, "certs");
    CA_ASN1_OPTIONAL(CAsn1SequenceOf<CAsn1PolicyInformation>, Policies, "policies");
    CA_ASN1_END;
};

// OtherHashAlgAndValue ::= SEQUENCE {
//     hashAlgorithm  AlgorithmIdentifier,
//     hashValue      OtherHashValue }   -- OCTET STRING     RFC 5126, 5.7.3.3
class CAsn1OtherHashAlgAndValue : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("OtherHashAlgAndValue");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, HashAlgorithm, "hashAlgorithm");
    CA_ASN1_REQUIRED(CAsn1OctetString, HashValue, "hashValue");
    CA_ASN1_END;
};

// OtherHash ::= CHOICE {
//     sha1Hash   OtherHashValue,     -- OCTET STRING
//     otherHash  OtherHashAlgAndValue }     RFC 5126, 5.7.3.3
class CAsn1OtherHash : public CAsn1TypedObject {
    CA_ASN1_CHOICE("OtherHash");
    CA_ASN1_ALTERNATIVE(CAsn1OctetString, Sha1Hash, "sha1Hash");
    CA_ASN1_ALTERNATIVE(CAsn1OtherHashAlgAndValue, OtherHash, "otherHash");
    CA_ASN1_END;
};

// OtherCertID ::= SEQUENCE {
//     otherCertHash  OtherHash,
//     issuerSerial   IssuerSerial OPTIONAL }     RFC 5126, 5.7.3.3
// CompleteCertificateRefs (6.2.1) is a SEQUENCE OF these.
class CAsn1OtherCertId : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("OtherCertID");
    CA_ASN1_REQUIRED(CAsn1OtherHash, OtherCertHash, "otherCertHash");
    CA_ASN1_OPTIONAL(CAsn1IssuerSerial, IssuerSerial, "issuerSerial");
    CA_ASN1_END;
};

// OtherSigningCertificate ::= SEQUENCE {
//     certs     SEQUENCE OF OtherCertID,
//     policies  SEQUENCE OF PolicyInformation OPTIONAL }     RFC 5126, 5.7.3.3
class CAsn1OtherSigningCertificate : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("OtherSigningCertificate");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1OtherCertId>, Certs, "certs");
    CA_ASN1_OPTIONAL(CAsn1SequenceOf<CAsn1PolicyInformation>, Policies, "policies");
    CA_ASN1_END;
};
