#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"
#include "asn1/Asn1Time.h"
#include "asn1/ocsp/CertId.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/Extension.h"
#include "asn1/x509/Name.h"

// ResponseBytes ::= SEQUENCE {
//     responseType  OBJECT IDENTIFIER,
//     response      OCTET STRING }     RFC 6960, 4.2.1
class CAsn1ResponseBytes : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ResponseBytes");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, ResponseType, "responseType");
    CA_ASN1_REQUIRED(CAsn1OctetString, Response, "response");
    CA_ASN1_END;
};

// OCSPResponse ::= SEQUENCE {
//     responseStatus  OCSPResponseStatus,     -- ENUMERATED
//     responseBytes   [0] EXPLICIT ResponseBytes OPTIONAL }     RFC 6960, 4.2.1
class CAsn1OcspResponse : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("OCSPResponse");
    CA_ASN1_REQUIRED(CAsn1Any, ResponseStatus, "responseStatus");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1ResponseBytes, ResponseBytes, "responseBytes");
    CA_ASN1_END;
};

// ResponderID ::= CHOICE {
//     byName  [1] Name,
//     byKey   [2] KeyHash }   -- OCTET STRING, the SHA-1 of the key     RFC 6960, 4.2.1
// The tags are explicit.
class CAsn1ResponderId : public CAsn1TypedObject {
    CA_ASN1_CHOICE("ResponderID");
    CA_ASN1_ALTERNATIVE_EXPLICIT(1, CAsn1Name, ByName, "byName");
    CA_ASN1_ALTERNATIVE_EXPLICIT(2, CAsn1OctetString, ByKey, "byKey");
    CA_ASN1_END;
};

// RevokedInfo ::= SEQUENCE {
//     revocationTime    GeneralizedTime,
//     revocationReason  [0] EXPLICIT CRLReason OPTIONAL }   -- ENUMERATED     RFC 6960, 4.2.1
class CAsn1RevokedInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("RevokedInfo");
    CA_ASN1_REQUIRED(CAsn1GeneralizedTime, RevocationTime, "revocationTime");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1Any, RevocationReason, "revocationReason");
    CA_ASN1_END;
};

// CertStatus ::= CHOICE {
//     good     [0] IMPLICIT NULL,
//     revoked  [1] IMPLICIT RevokedInfo,
//     unknown  [2] IMPLICIT UnknownInfo }   -- NULL     RFC 6960, 4.2.1
class CAsn1CertStatus : public CAsn1TypedObject {
    CA_ASN1_CHOICE("CertStatus");
    CA_ASN1_ALTERNATIVE_IMPLICIT(0, CAsn1Null, Good, "good");
    CA_ASN1_ALTERNATIVE_IMPLICIT(1, CAsn1RevokedInfo, Revoked, "revoked");
    CA_ASN1_ALTERNATIVE_IMPLICIT(2, CAsn1Null, Unknown, "unknown");
    CA_ASN1_END;
};

// SingleResponse ::= SEQUENCE {
//     certID            CertID,
//     certStatus        CertStatus,
//     thisUpdate        GeneralizedTime,
//     nextUpdate        [0] EXPLICIT GeneralizedTime OPTIONAL,
//     singleExtensions  [1] EXPLICIT Extensions OPTIONAL }     RFC 6960, 4.2.1
class CAsn1SingleResponse : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("SingleResponse");
    CA_ASN1_REQUIRED(CAsn1CertId, CertId, "certID");
    CA_ASN1_REQUIRED(CAsn1CertStatus, CertStatus, "certStatus");
    CA_ASN1_REQUIRED(CAsn1GeneralizedTime, ThisUpdate, "thisUpdate");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1GeneralizedTime, NextUpdate, "nextUpdate");
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1Extensions, SingleExtensions, "singleExtensions");
    CA_ASN1_END;
};

// ResponseData ::= SEQUENCE {
//     version             [0] EXPLICIT Version DEFAULT v1,     -- INTEGER
//     responderID         ResponderID,
//     producedAt          GeneralizedTime,
//     responses           SEQUENCE OF SingleResponse,
//     responseExtensions  [1] EXPLICIT Extensions OPTIONAL }     RFC 6960, 4.2.1
class CAsn1ResponseData : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ResponseData");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1ResponderId, ResponderId, "responderID");
    CA_ASN1_REQUIRED(CAsn1GeneralizedTime, ProducedAt, "producedAt");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1SingleResponse>, Responses, "responses");
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1Extensions, ResponseExtensions, "responseExtensions");
    CA_ASN1_END;
};

// BasicOCSPResponse ::= SEQUENCE {
//     tbsResponseData     ResponseData,
//     signatureAlgorithm  AlgorithmIdentifier,
//     signature           BIT STRING,
//     certs               [0] EXPLICIT SEQUENCE OF Certificate OPTIONAL }     RFC 6960, 4.2.1
class CAsn1BasicOcspResponse : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("BasicOCSPResponse");
    CA_ASN1_REQUIRED(CAsn1ResponseData, TbsResponseData, "tbsResponseData");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, SignatureAlgorithm, "signatureAlgorithm");
    CA_ASN1_REQUIRED(CAsn1BitString, Signature, "signature");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1SequenceOf<CAsn1Any>, Certs, "certs");
    CA_ASN1_END;
};

// CrlID ::= SEQUENCE {
//     crlUrl   [0] EXPLICIT IA5String OPTIONAL,
//     crlNum   [1] EXPLICIT INTEGER OPTIONAL,
//     crlTime  [2] EXPLICIT GeneralizedTime OPTIONAL }     RFC 6960, 4.4.2
class CAsn1CrlId : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("CrlID");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1IA5String, CrlUrl, "crlUrl");
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1Integer, CrlNum, "crlNum");
    CA_ASN1_OPTIONAL_EXPLICIT(2, CAsn1GeneralizedTime, CrlTime, "crlTime");
    CA_ASN1_END;
};
