#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Time.h"
#include "asn1/attributes/SigningCertificate.h"
#include "asn1/ocsp/OcspResponse.h"
#include "asn1/x509/Name.h"

// CrlIdentifier ::= SEQUENCE {
//     crlissuer      Name,
//     crlIssuedTime  UTCTime,
//     crlNumber      INTEGER OPTIONAL }     RFC 5126, 6.2.2
// A GeneralizedTime, which later lists need, is taken too.
class CAsn1CrlIdentifier : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("CrlIdentifier");
    CA_ASN1_REQUIRED(CAsn1Name, CrlIssuer, "crlIssuer");
    CA_ASN1_REQUIRED(CAsn1Time, CrlIssuedTime, "crlIssuedTime");
    CA_ASN1_OPTIONAL(CAsn1Integer, CrlNumber, "crlNumber");
    CA_ASN1_END;
};

// CrlValidatedID ::= SEQUENCE {
//     crlHash        OtherHash,
//     crlIdentifier  CrlIdentifier OPTIONAL }     RFC 5126, 6.2.2
class CAsn1CrlValidatedId : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("CrlValidatedID");
    CA_ASN1_REQUIRED(CAsn1OtherHash, CrlHash, "crlHash");
    CA_ASN1_OPTIONAL(CAsn1CrlIdentifier, CrlIdentifier, "crlIdentifier");
    CA_ASN1_END;
};

// CRLListID ::= SEQUENCE { crls SEQUENCE OF CrlValidatedID }     RFC 5126, 6.2.2
class CAsn1CrlListId : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("CRLListID");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1CrlValidatedId>, Crls, "crls");
    CA_ASN1_END;
};

// OcspIdentifier ::= SEQUENCE {
//     ocspResponderID  ResponderID,
//     producedAt       GeneralizedTime }     RFC 5126, 6.2.2
class CAsn1OcspIdentifier : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("OcspIdentifier");
    CA_ASN1_REQUIRED(CAsn1ResponderId, OcspResponderId, "ocspResponderID");
    CA_ASN1_REQUIRED(CAsn1GeneralizedTime, ProducedAt, "producedAt");
    CA_ASN1_END;
};

// OcspResponsesID ::= SEQUENCE {
//     ocspIdentifier  OcspIdentifier,
//     ocspRepHash     OtherHash OPTIONAL }     RFC 5126, 6.2.2
class CAsn1OcspResponsesId : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("OcspResponsesID");
    CA_ASN1_REQUIRED(CAsn1OcspIdentifier, OcspIdentifier, "ocspIdentifier");
    CA_ASN1_OPTIONAL(CAsn1OtherHash, OcspRepHash, "ocspRepHash");
    CA_ASN1_END;
};

// OcspListID ::= SEQUENCE { ocspResponses SEQUENCE OF OcspResponsesID }     RFC 5126, 6.2.2
class CAsn1OcspListId : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("OcspListID");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1OcspResponsesId>, OcspResponses, "ocspResponses");
    CA_ASN1_END;
};

// CrlOcspRef ::= SEQUENCE {
//     crlids   [0] EXPLICIT CRLListID OPTIONAL,
//     ocspids  [1] EXPLICIT OcspListID OPTIONAL,
//     otherRev [2] EXPLICIT OtherRevRefs OPTIONAL }     RFC 5126, 6.2.2
class CAsn1CrlOcspRef : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("CrlOcspRef");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1CrlListId, Crlids, "crlids");
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1OcspListId, Ocspids, "ocspids");
    CA_ASN1_OPTIONAL_EXPLICIT(2, CAsn1Any, OtherRev, "otherRev");
    CA_ASN1_END;
};

// RevocationValues ::= SEQUENCE {
//     crlVals       [0] EXPLICIT SEQUENCE OF CertificateList OPTIONAL,
//     ocspVals      [1] EXPLICIT SEQUENCE OF BasicOCSPResponse OPTIONAL,
//     otherRevVals  [2] EXPLICIT OtherRevVals OPTIONAL }     RFC 5126, 6.3.4
// RevocationInfoArchival (ISO 32000-1, 12.8.3.3.2) is the same with whole OCSP responses.
class CAsn1RevocationValues : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("RevocationValues");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1SequenceOf<CAsn1Any>, CrlVals, "crlVals");
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1SequenceOf<CAsn1Any>, OcspVals, "ocspVals");
    CA_ASN1_OPTIONAL_EXPLICIT(2, CAsn1Any, OtherRevVals, "otherRevVals");
    CA_ASN1_END;
};
