#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"
#include "asn1/cms/ContentInfo.h"

// PKIStatusInfo ::= SEQUENCE {
//     status        PKIStatus,     -- INTEGER
//     statusString  PKIFreeText OPTIONAL,     -- SEQUENCE OF UTF8String
//     failInfo      PKIFailureInfo OPTIONAL }   -- BIT STRING     RFC 3161, 2.4.2
class CAsn1PkiStatusInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "PKIStatusInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Status() const { return m_status; }
    const CAsn1SequenceOf<CAsn1Any>* StatusString() const { return m_statusString; }
    const CAsn1BitString* FailInfo() const { return m_failInfo; }

  private:
    CAsn1Integer* m_status = nullptr;
    CAsn1SequenceOf<CAsn1Any>* m_statusString = nullptr;
    CAsn1BitString* m_failInfo = nullptr;
};

// TimeStampResp ::= SEQUENCE {
//     status          PKIStatusInfo,
//     timeStampToken  ContentInfo OPTIONAL }     RFC 3161, 2.4.2
class CAsn1TimeStampResp : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "TimeStampResp";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1PkiStatusInfo* Status() const { return m_status; }
    const CAsn1ContentInfo* TimeStampToken() const { return m_timeStampToken; }

  private:
    CAsn1PkiStatusInfo* m_status = nullptr;
    CAsn1ContentInfo* m_timeStampToken = nullptr;
};
