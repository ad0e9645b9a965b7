#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"
#include "asn1/attributes/Attribute.h"
#include "asn1/attributes/EvidenceRecord.h"
#include "asn1/cms/ContentInfo.h"

// A file with the proof of when it was there.

// MetaData ::= SEQUENCE {
//     hashProtected  BOOLEAN,
//     fileName       UTF8String OPTIONAL,
//     mediaType      IA5String OPTIONAL,
//     otherMetaData  Attributes OPTIONAL }   -- SET OF Attribute     RFC 5544, 2
class CAsn1MetaData : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "MetaData";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Boolean* HashProtected() const { return m_hashProtected; }
    const CAsn1UTF8String* FileName() const { return m_fileName; }
    const CAsn1IA5String* MediaType() const { return m_mediaType; }
    const CAsn1SetOf<CAsn1Attribute>* OtherMetaData() const { return m_otherMetaData; }

  private:
    CAsn1Boolean* m_hashProtected = nullptr;
    CAsn1UTF8String* m_fileName = nullptr;
    CAsn1IA5String* m_mediaType = nullptr;
    CAsn1SetOf<CAsn1Attribute>* m_otherMetaData = nullptr;
};

// TimeStampAndCRL ::= SEQUENCE {
//     timeStamp  TimeStampToken,     -- ContentInfo
//     crl        CertificateList OPTIONAL }     RFC 5544, 2
class CAsn1TimeStampAndCrl : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "TimeStampAndCRL";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ContentInfo* TimeStamp() const { return m_timeStamp; }
    const CAsn1Any* Crl() const { return m_crl; }

  private:
    CAsn1ContentInfo* m_timeStamp = nullptr;
    CAsn1Any* m_crl = nullptr;
};

// OtherEvidence ::= SEQUENCE {
//     oeType   OBJECT IDENTIFIER,
//     oeValue  ANY DEFINED BY oeType }     RFC 5544, 2
class CAsn1OtherEvidence : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OtherEvidence";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ObjectIdentifier* OeType() const { return m_oeType; }
    const CAsn1Any* OeValue() const { return m_oeValue; }

  private:
    CAsn1ObjectIdentifier* m_oeType = nullptr;
    CAsn1Any* m_oeValue = nullptr;
};

// Evidence ::= CHOICE {
//     tstEvidence    [0] IMPLICIT SEQUENCE OF TimeStampAndCRL,
//     ersEvidence    [1] IMPLICIT EvidenceRecord,
//     otherEvidence  [2] IMPLICIT OtherEvidence }     RFC 5544, 2
class CAsn1Evidence : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Evidence";
    static bool Accepts(unsigned char tag) { return (tag & kAsn1ContextBit) != 0; }

    void Decode() override;

    const CAsn1SequenceOf<CAsn1TimeStampAndCrl>* TstEvidence() const { return m_tstEvidence; }
    const CAsn1EvidenceRecord* ErsEvidence() const { return m_ersEvidence; }
    const CAsn1OtherEvidence* OtherEvidence() const { return m_otherEvidence; }

  private:
    CAsn1SequenceOf<CAsn1TimeStampAndCrl>* m_tstEvidence = nullptr;
    CAsn1EvidenceRecord* m_ersEvidence = nullptr;
    CAsn1OtherEvidence* m_otherEvidence = nullptr;
};

// TimeStampedData ::= SEQUENCE {
//     version           INTEGER,
//     dataUri           IA5String OPTIONAL,
//     metaData          MetaData OPTIONAL,
//     content           OCTET STRING OPTIONAL,
//     temporalEvidence  Evidence }     RFC 5544, 2
class CAsn1TimeStampedData : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "TimeStampedData";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Version() const { return m_version; }
    const CAsn1IA5String* DataUri() const { return m_dataUri; }
    const CAsn1MetaData* MetaData() const { return m_metaData; }
    const CAsn1OctetString* Content() const { return m_content; }
    const CAsn1Evidence* TemporalEvidence() const { return m_temporalEvidence; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1IA5String* m_dataUri = nullptr;
    CAsn1MetaData* m_metaData = nullptr;
    CAsn1OctetString* m_content = nullptr;
    CAsn1Evidence* m_temporalEvidence = nullptr;
};
