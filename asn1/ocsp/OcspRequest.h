#pragma once

#include "asn1/Asn1List.h"
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
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Request";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1CertId* ReqCert() const { return m_reqCert; }
    CAsn1Extensions* SingleRequestExtensions() const { return m_singleRequestExtensions; }

  private:
    CAsn1CertId* m_reqCert = nullptr;
    CAsn1Extensions* m_singleRequestExtensions = nullptr;
};

// TBSRequest ::= SEQUENCE {
//     version            [0] EXPLICIT Version DEFAULT v1,     -- INTEGER
//     requestorName      [1] EXPLICIT GeneralName OPTIONAL,
//     requestList        SEQUENCE OF Request,
//     requestExtensions  [2] EXPLICIT Extensions OPTIONAL }     RFC 6960, 4.1.1
class CAsn1TbsOcspRequest : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "TBSRequest";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Version() const { return m_version; }
    CAsn1GeneralName* RequestorName() const { return m_requestorName; }
    CAsn1SequenceOf<CAsn1OcspSingleRequest>* RequestList() const { return m_requestList; }
    CAsn1Extensions* RequestExtensions() const { return m_requestExtensions; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1GeneralName* m_requestorName = nullptr;
    CAsn1SequenceOf<CAsn1OcspSingleRequest>* m_requestList = nullptr;
    CAsn1Extensions* m_requestExtensions = nullptr;
};

// Signature ::= SEQUENCE {
//     signatureAlgorithm  AlgorithmIdentifier,
//     signature           BIT STRING,
//     certs               [0] EXPLICIT SEQUENCE OF Certificate OPTIONAL }     RFC 6960, 4.1.1
class CAsn1OcspSignature : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Signature";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1AlgorithmIdentifier* SignatureAlgorithm() const { return m_signatureAlgorithm; }
    CAsn1BitString* Signature() const { return m_signature; }
    CAsn1SequenceOf<CAsn1Any>* Certs() const { return m_certs; }

  private:
    CAsn1AlgorithmIdentifier* m_signatureAlgorithm = nullptr;
    CAsn1BitString* m_signature = nullptr;
    CAsn1SequenceOf<CAsn1Any>* m_certs = nullptr;
};

// OCSPRequest ::= SEQUENCE {
//     tbsRequest         TBSRequest,
//     optionalSignature  [0] EXPLICIT Signature OPTIONAL }     RFC 6960, 4.1.1
class CAsn1OcspRequest : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OCSPRequest";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1TbsOcspRequest* TbsRequest() const { return m_tbsRequest; }
    CAsn1OcspSignature* OptionalSignature() const { return m_optionalSignature; }

  private:
    CAsn1TbsOcspRequest* m_tbsRequest = nullptr;
    CAsn1OcspSignature* m_optionalSignature = nullptr;
};

// ServiceLocator ::= SEQUENCE {
//     issuer   Name,
//     locator  AuthorityInfoAccessSyntax }     RFC 6960, 4.4.6
class CAsn1ServiceLocator : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ServiceLocator";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Name* Issuer() const { return m_issuer; }
    CAsn1SequenceOf<CAsn1AccessDescription>* Locator() const { return m_locator; }

  private:
    CAsn1Name* m_issuer = nullptr;
    CAsn1SequenceOf<CAsn1AccessDescription>* m_locator = nullptr;
};
