#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"
#include "asn1/cms/ContentInfo.h"
#include "asn1/cms/EvidenceRecord.h"
#include "asn1/x509/Attribute.h"

// A file with the proof of when it was there.

// MetaData ::= SEQUENCE {
//     hashProtected  BOOLEAN,
//     fileName       UTF8String OPTIONAL,
//     mediaType      IA5String OPTIONAL,
//     otherMetaData  Attributes OPTIONAL }   -- SET OF Attribute     RFC 5544, 2
class CAsn1MetaData : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("MetaData");
    CA_ASN1_REQUIRED(CAsn1Boolean, HashProtected, "hashProtected");
    CA_ASN1_OPTIONAL(CAsn1UTF8String, FileName, "fileName");
    CA_ASN1_OPTIONAL(CAsn1IA5String, MediaType, "mediaType");
    CA_ASN1_OPTIONAL(CAsn1SetOf<CAsn1Attribute>, OtherMetaData, "otherMetaData");
    CA_ASN1_END;
};

// TimeStampAndCRL ::= SEQUENCE {
//     timeStamp  TimeStampToken,     -- ContentInfo
//     crl        CertificateList OPTIONAL }     RFC 5544, 2
class CAsn1TimeStampAndCrl : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("TimeStampAndCRL");
    CA_ASN1_REQUIRED(CAsn1ContentInfo, TimeStamp, "timeStamp");
    CA_ASN1_OPTIONAL(CAsn1Any, Crl, "crl");
    CA_ASN1_END;
};

// OtherEvidence ::= SEQUENCE {
//     oeType   OBJECT IDENTIFIER,
//     oeValue  ANY DEFINED BY oeType }     RFC 5544, 2
class CAsn1OtherEvidence : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("OtherEvidence");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, OeType, "oeType");
    CA_ASN1_REQUIRED(CAsn1Any, OeValue, "oeValue");
    CA_ASN1_END;
};

// Evidence ::= CHOICE {
//     tstEvidence    [0] IMPLICIT SEQUENCE OF TimeStampAndCRL,
//     ersEvidence    [1] IMPLICIT EvidenceRecord,
//     otherEvidence  [2] IMPLICIT OtherEvidence }     RFC 5544, 2
class CAsn1Evidence : public CAsn1TypedObject {
    CA_ASN1_CHOICE("Evidence");
    CA_ASN1_ALTERNATIVE_IMPLICIT(0, CAsn1SequenceOf<CAsn1TimeStampAndCrl>, TstEvidence,
                                 "tstEvidence");
    CA_ASN1_ALTERNATIVE_IMPLICIT(1, CAsn1EvidenceRecord, ErsEvidence, "ersEvidence");
    CA_ASN1_ALTERNATIVE_IMPLICIT(2, CAsn1OtherEvidence, OtherEvidence, "otherEvidence");
    CA_ASN1_END;
};

// TimeStampedData ::= SEQUENCE {
//     version           INTEGER,
//     dataUri           IA5String OPTIONAL,
//     metaData          MetaData OPTIONAL,
//     content           OCTET STRING OPTIONAL,
//     temporalEvidence  Evidence }     RFC 5544, 2
class CAsn1TimeStampedData : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("TimeStampedData");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_OPTIONAL(CAsn1IA5String, DataUri, "dataUri");
    CA_ASN1_OPTIONAL(CAsn1MetaData, MetaData, "metaData");
    CA_ASN1_OPTIONAL(CAsn1OctetString, Content, "content");
    CA_ASN1_REQUIRED(CAsn1Evidence, TemporalEvidence, "temporalEvidence");
    CA_ASN1_END;
};
