#pragma once

#include "asn1/Asn1List.h"
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
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ResponseBytes";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ObjectIdentifier* ResponseType() const { return m_responseType; }
    CAsn1OctetString* Response() const { return m_response; }

  private:
    CAsn1ObjectIdentifier* m_responseType = nullptr;
    CAsn1OctetString* m_response = nullptr;
};

// OCSPResponse ::= SEQUENCE {
//     responseStatus  OCSPResponseStatus,     -- ENUMERATED
//     responseBytes   [0] EXPLICIT ResponseBytes OPTIONAL }     RFC 6960, 4.2.1
class CAsn1OcspResponse : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OCSPResponse";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Any* ResponseStatus() const { return m_responseStatus; }
    CAsn1ResponseBytes* ResponseBytes() const { return m_responseBytes; }

  private:
    CAsn1Any* m_responseStatus = nullptr;
    CAsn1ResponseBytes* m_responseBytes = nullptr;
};

// ResponderID ::= CHOICE {
//     byName  [1] Name,
//     byKey   [2] KeyHash }   -- OCTET STRING, the SHA-1 of the key     RFC 6960, 4.2.1
// The tags are explicit.
class CAsn1ResponderId : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ResponderID";
    static bool Accepts(unsigned char tag) { return (tag & kAsn1ContextBit) != 0; }

    void Decode() override;

    CAsn1Name* ByName() const { return m_byName; }
    CAsn1OctetString* ByKey() const { return m_byKey; }

  private:
    CAsn1Name* m_byName = nullptr;
    CAsn1OctetString* m_byKey = nullptr;
};

// RevokedInfo ::= SEQUENCE {
//     revocationTime    GeneralizedTime,
//     revocationReason  [0] EXPLICIT CRLReason OPTIONAL }   -- ENUMERATED     RFC 6960, 4.2.1
class CAsn1RevokedInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "RevokedInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1GeneralizedTime* RevocationTime() const { return m_revocationTime; }
    CAsn1Any* RevocationReason() const { return m_revocationReason; }

  private:
    CAsn1GeneralizedTime* m_revocationTime = nullptr;
    CAsn1Any* m_revocationReason = nullptr;
};

// CertStatus ::= CHOICE {
//     good     [0] IMPLICIT NULL,
//     revoked  [1] IMPLICIT RevokedInfo,
//     unknown  [2] IMPLICIT UnknownInfo }   -- NULL     RFC 6960, 4.2.1
class CAsn1CertStatus : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "CertStatus";
    static bool Accepts(unsigned char tag) { return (tag & kAsn1ContextBit) != 0; }

    void Decode() override;

    CAsn1Null* Good() const { return m_good; }
    CAsn1RevokedInfo* Revoked() const { return m_revoked; }
    CAsn1Null* Unknown() const { return m_unknown; }

  private:
    CAsn1Null* m_good = nullptr;
    CAsn1RevokedInfo* m_revoked = nullptr;
    CAsn1Null* m_unknown = nullptr;
};

// SingleResponse ::= SEQUENCE {
//     certID            CertID,
//     certStatus        CertStatus,
//     thisUpdate        GeneralizedTime,
//     nextUpdate        [0] EXPLICIT GeneralizedTime OPTIONAL,
//     singleExtensions  [1] EXPLICIT Extensions OPTIONAL }     RFC 6960, 4.2.1
class CAsn1SingleResponse : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "SingleResponse";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1CertId* CertId() const { return m_certId; }
    CAsn1CertStatus* CertStatus() const { return m_certStatus; }
    CAsn1GeneralizedTime* ThisUpdate() const { return m_thisUpdate; }
    CAsn1GeneralizedTime* NextUpdate() const { return m_nextUpdate; }
    CAsn1Extensions* SingleExtensions() const { return m_singleExtensions; }

  private:
    CAsn1CertId* m_certId = nullptr;
    CAsn1CertStatus* m_certStatus = nullptr;
    CAsn1GeneralizedTime* m_thisUpdate = nullptr;
    CAsn1GeneralizedTime* m_nextUpdate = nullptr;
    CAsn1Extensions* m_singleExtensions = nullptr;
};

// ResponseData ::= SEQUENCE {
//     version             [0] EXPLICIT Version DEFAULT v1,     -- INTEGER
//     responderID         ResponderID,
//     producedAt          GeneralizedTime,
//     responses           SEQUENCE OF SingleResponse,
//     responseExtensions  [1] EXPLICIT Extensions OPTIONAL }     RFC 6960, 4.2.1
class CAsn1ResponseData : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ResponseData";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Version() const { return m_version; }
    CAsn1ResponderId* ResponderId() const { return m_responderId; }
    CAsn1GeneralizedTime* ProducedAt() const { return m_producedAt; }
    CAsn1SequenceOf<CAsn1SingleResponse>* Responses() const { return m_responses; }
    CAsn1Extensions* ResponseExtensions() const { return m_responseExtensions; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1ResponderId* m_responderId = nullptr;
    CAsn1GeneralizedTime* m_producedAt = nullptr;
    CAsn1SequenceOf<CAsn1SingleResponse>* m_responses = nullptr;
    CAsn1Extensions* m_responseExtensions = nullptr;
};

// BasicOCSPResponse ::= SEQUENCE {
//     tbsResponseData     ResponseData,
//     signatureAlgorithm  AlgorithmIdentifier,
//     signature           BIT STRING,
//     certs               [0] EXPLICIT SEQUENCE OF Certificate OPTIONAL }     RFC 6960, 4.2.1
class CAsn1BasicOcspResponse : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "BasicOCSPResponse";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ResponseData* TbsResponseData() const { return m_tbsResponseData; }
    CAsn1AlgorithmIdentifier* SignatureAlgorithm() const { return m_signatureAlgorithm; }
    CAsn1BitString* Signature() const { return m_signature; }
    CAsn1SequenceOf<CAsn1Any>* Certs() const { return m_certs; }

  private:
    CAsn1ResponseData* m_tbsResponseData = nullptr;
    CAsn1AlgorithmIdentifier* m_signatureAlgorithm = nullptr;
    CAsn1BitString* m_signature = nullptr;
    CAsn1SequenceOf<CAsn1Any>* m_certs = nullptr;
};

// CrlID ::= SEQUENCE {
//     crlUrl   [0] EXPLICIT IA5String OPTIONAL,
//     crlNum   [1] EXPLICIT INTEGER OPTIONAL,
//     crlTime  [2] EXPLICIT GeneralizedTime OPTIONAL }     RFC 6960, 4.4.2
class CAsn1CrlId : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "CrlID";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1IA5String* CrlUrl() const { return m_crlUrl; }
    CAsn1Integer* CrlNum() const { return m_crlNum; }
    CAsn1GeneralizedTime* CrlTime() const { return m_crlTime; }

  private:
    CAsn1IA5String* m_crlUrl = nullptr;
    CAsn1Integer* m_crlNum = nullptr;
    CAsn1GeneralizedTime* m_crlTime = nullptr;
};
