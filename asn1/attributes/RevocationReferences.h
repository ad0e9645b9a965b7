#pragma once

#include "asn1/Asn1List.h"
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
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "CrlIdentifier";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Name* CrlIssuer() const { return m_crlIssuer; }
    CAsn1Time* CrlIssuedTime() const { return m_crlIssuedTime; }
    CAsn1Integer* CrlNumber() const { return m_crlNumber; }

  private:
    CAsn1Name* m_crlIssuer = nullptr;
    CAsn1Time* m_crlIssuedTime = nullptr;
    CAsn1Integer* m_crlNumber = nullptr;
};

// CrlValidatedID ::= SEQUENCE {
//     crlHash        OtherHash,
//     crlIdentifier  CrlIdentifier OPTIONAL }     RFC 5126, 6.2.2
class CAsn1CrlValidatedId : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "CrlValidatedID";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1OtherHash* CrlHash() const { return m_crlHash; }
    CAsn1CrlIdentifier* CrlIdentifier() const { return m_crlIdentifier; }

  private:
    CAsn1OtherHash* m_crlHash = nullptr;
    CAsn1CrlIdentifier* m_crlIdentifier = nullptr;
};

// CRLListID ::= SEQUENCE { crls SEQUENCE OF CrlValidatedID }     RFC 5126, 6.2.2
class CAsn1CrlListId : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "CRLListID";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1SequenceOf<CAsn1CrlValidatedId>* Crls() const { return m_crls; }

  private:
    CAsn1SequenceOf<CAsn1CrlValidatedId>* m_crls = nullptr;
};

// OcspIdentifier ::= SEQUENCE {
//     ocspResponderID  ResponderID,
//     producedAt       GeneralizedTime }     RFC 5126, 6.2.2
class CAsn1OcspIdentifier : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OcspIdentifier";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ResponderId* OcspResponderId() const { return m_ocspResponderId; }
    CAsn1GeneralizedTime* ProducedAt() const { return m_producedAt; }

  private:
    CAsn1ResponderId* m_ocspResponderId = nullptr;
    CAsn1GeneralizedTime* m_producedAt = nullptr;
};

// OcspResponsesID ::= SEQUENCE {
//     ocspIdentifier  OcspIdentifier,
//     ocspRepHash     OtherHash OPTIONAL }     RFC 5126, 6.2.2
class CAsn1OcspResponsesId : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OcspResponsesID";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1OcspIdentifier* OcspIdentifier() const { return m_ocspIdentifier; }
    CAsn1OtherHash* OcspRepHash() const { return m_ocspRepHash; }

  private:
    CAsn1OcspIdentifier* m_ocspIdentifier = nullptr;
    CAsn1OtherHash* m_ocspRepHash = nullptr;
};

// OcspListID ::= SEQUENCE { ocspResponses SEQUENCE OF OcspResponsesID }     RFC 5126, 6.2.2
class CAsn1OcspListId : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OcspListID";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1SequenceOf<CAsn1OcspResponsesId>* OcspResponses() const { return m_ocspResponses; }

  private:
    CAsn1SequenceOf<CAsn1OcspResponsesId>* m_ocspResponses = nullptr;
};

// CrlOcspRef ::= SEQUENCE {
//     crlids   [0] EXPLICIT CRLListID OPTIONAL,
//     ocspids  [1] EXPLICIT OcspListID OPTIONAL,
//     otherRev [2] EXPLICIT OtherRevRefs OPTIONAL }     RFC 5126, 6.2.2
class CAsn1CrlOcspRef : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "CrlOcspRef";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1CrlListId* Crlids() const { return m_crlids; }
    CAsn1OcspListId* Ocspids() const { return m_ocspids; }
    CAsn1Any* OtherRev() const { return m_otherRev; }

  private:
    CAsn1CrlListId* m_crlids = nullptr;
    CAsn1OcspListId* m_ocspids = nullptr;
    CAsn1Any* m_otherRev = nullptr;
};

// RevocationValues ::= SEQUENCE {
//     crlVals       [0] EXPLICIT SEQUENCE OF CertificateList OPTIONAL,
//     ocspVals      [1] EXPLICIT SEQUENCE OF BasicOCSPResponse OPTIONAL,
//     otherRevVals  [2] EXPLICIT OtherRevVals OPTIONAL }     RFC 5126, 6.3.4
// RevocationInfoArchival (ISO 32000-1, 12.8.3.3.2) is the same with whole OCSP responses.
class CAsn1RevocationValues : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "RevocationValues";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1SequenceOf<CAsn1Any>* CrlVals() const { return m_crlVals; }
    CAsn1SequenceOf<CAsn1Any>* OcspVals() const { return m_ocspVals; }
    CAsn1Any* OtherRevVals() const { return m_otherRevVals; }

  private:
    CAsn1SequenceOf<CAsn1Any>* m_crlVals = nullptr;
    CAsn1SequenceOf<CAsn1Any>* m_ocspVals = nullptr;
    CAsn1Any* m_otherRevVals = nullptr;
};
