#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/ocsp/CertId.h"
#include "asn1/x509/AccessDescription.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/Extension.h"
#include "asn1/x509/GeneralName.h"
#include "asn1/x509/Name.h"

// Request ::= SEQUENCE {
//     reqCert                  CertID,
//     singleRequestExtensions  [0] EXPLICIT Extensions OPTIONAL }     RFC 6960, 4.1.1
class CAsn1OcspSingleRequest : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("Request");
    CA_ASN1_REQUIRED(CAsn1CertId, ReqCert, "reqCert");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1Extensions, SingleRequestExtensions,
                              "singleRequestExtensions");
    CA_ASN1_END;
};

// TBSRequest ::= SEQUENCE {
//     version            [0] EXPLICIT Version DEFAULT v1,     -- INTEGER
//     requestorName      [1] EXPLICIT GeneralName OPTIONAL,
//     requestList        SEQUENCE OF Request,
//     requestExtensions  [2] EXPLICIT Extensions OPTIONAL }     RFC 6960, 4.1.1
class CAsn1TbsOcspRequest : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("TBSRequest");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1Integer, Version, "version");
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1GeneralName, RequestorName, "requestorName");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1OcspSingleRequest>, RequestList, "requestList");
    CA_ASN1_OPTIONAL_EXPLICIT(2, CAsn1Extensions, RequestExtensions, "requestExtensions");
    CA_ASN1_END;
};

// Signature ::= SEQUENCE {
//     signatureAlgorithm  AlgorithmIdentifier,
//     signature           BIT STRING,
//     certs               [0] EXPLICIT SEQUENCE OF Certificate OPTIONAL }     RFC 6960, 4.1.1
class CAsn1OcspSignature : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("Signature");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, SignatureAlgorithm, "signatureAlgorithm");
    CA_ASN1_REQUIRED(CAsn1BitString, Signature, "signature");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1SequenceOf<CAsn1Any>, Certs, "certs");
    CA_ASN1_END;
};

// OCSPRequest ::= SEQUENCE {
//     tbsRequest         TBSRequest,
//     optionalSignature  [0] EXPLICIT Signature OPTIONAL }     RFC 6960, 4.1.1
class CAsn1OcspRequest : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("OCSPRequest");
    CA_ASN1_REQUIRED(CAsn1TbsOcspRequest, TbsRequest, "tbsRequest");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1OcspSignature, OptionalSignature, "optionalSignature");
    CA_ASN1_END;
};

// ServiceLocator ::= SEQUENCE {
//     issuer   Name,
//     locator  AuthorityInfoAccessSyntax }     RFC 6960, 4.4.6
class CAsn1ServiceLocator : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ServiceLocator");
    CA_ASN1_REQUIRED(CAsn1Name, Issuer, "issuer");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1AccessDescription>, Locator, "locator");
    CA_ASN1_END;
};
