#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/attributes/Holder.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/PolicyInformation.h"

// ESSCertID ::= SEQUENCE {
//     certHash      Hash,     -- OCTET STRING, SHA-1
//     issuerSerial  IssuerSerial OPTIONAL }     RFC 5035, 5
class CAsn1EssCertId : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ESSCertID";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1OctetString* CertHash() const { return m_certHash; }
    CAsn1IssuerSerial* IssuerSerial() const { return m_issuerSerial; }

  private:
    CAsn1OctetString* m_certHash = nullptr;
    CAsn1IssuerSerial* m_issuerSerial = nullptr;
};

// SigningCertificate ::= SEQUENCE {
//     certs     SEQUENCE OF ESSCertID,
//     policies  SEQUENCE OF PolicyInformation OPTIONAL }     RFC 5035, 5
class CAsn1SigningCertificate : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "SigningCertificate";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1SequenceOf<CAsn1EssCertId>* Certs() const { return m_certs; }
    CAsn1SequenceOf<CAsn1PolicyInformation>* Policies() const { return m_policies; }

  private:
    CAsn1SequenceOf<CAsn1EssCertId>* m_certs = nullptr;
    CAsn1SequenceOf<CAsn1PolicyInformation>* m_policies = nullptr;
};

// ESSCertIDv2 ::= SEQUENCE {
//     hashAlgorithm  AlgorithmIdentifier DEFAULT {id-sha256},
//     certHash       Hash,     -- OCTET STRING
//     issuerSerial   IssuerSerial OPTIONAL }     RFC 5035, 4
class CAsn1EssCertIdV2 : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ESSCertIDv2";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    /// Null for SHA-256, the default.
    CAsn1AlgorithmIdentifier* HashAlgorithm() const { return m_hashAlgorithm; }
    CAsn1OctetString* CertHash() const { return m_certHash; }
    CAsn1IssuerSerial* IssuerSerial() const { return m_issuerSerial; }

  private:
    CAsn1AlgorithmIdentifier* m_hashAlgorithm = nullptr;
    CAsn1OctetString* m_certHash = nullptr;
    CAsn1IssuerSerial* m_issuerSerial = nullptr;
};

// SigningCertificateV2 ::= SEQUENCE {
//     certs     SEQUENCE OF ESSCertIDv2,
//     policies  SEQUENCE OF PolicyInformation OPTIONAL }     RFC 5035, 3
class CAsn1SigningCertificateV2 : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "SigningCertificateV2";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1SequenceOf<CAsn1EssCertIdV2>* Certs() const { return m_certs; }
    CAsn1SequenceOf<CAsn1PolicyInformation>* Policies() const { return m_policies; }

  private:
    CAsn1SequenceOf<CAsn1EssCertIdV2>* m_certs = nullptr;
    CAsn1SequenceOf<CAsn1PolicyInformation>* m_policies = nullptr;
};

// OtherHashAlgAndValue ::= SEQUENCE {
//     hashAlgorithm  AlgorithmIdentifier,
//     hashValue      OtherHashValue }   -- OCTET STRING     RFC 5126, 5.7.3.3
class CAsn1OtherHashAlgAndValue : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OtherHashAlgAndValue";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1AlgorithmIdentifier* HashAlgorithm() const { return m_hashAlgorithm; }
    CAsn1OctetString* HashValue() const { return m_hashValue; }

  private:
    CAsn1AlgorithmIdentifier* m_hashAlgorithm = nullptr;
    CAsn1OctetString* m_hashValue = nullptr;
};

// OtherHash ::= CHOICE {
//     sha1Hash   OtherHashValue,     -- OCTET STRING
//     otherHash  OtherHashAlgAndValue }     RFC 5126, 5.7.3.3
class CAsn1OtherHash : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OtherHash";
    static bool Accepts(unsigned char tag) {
        return tag == kAsn1Sequence || (tag & ~unsigned{kAsn1ConstructedBit}) == kAsn1OctetString;
    }

    void Decode() override;

    CAsn1OctetString* Sha1Hash() const { return m_sha1Hash; }
    CAsn1OtherHashAlgAndValue* OtherHash() const { return m_otherHash; }

  private:
    CAsn1OctetString* m_sha1Hash = nullptr;
    CAsn1OtherHashAlgAndValue* m_otherHash = nullptr;
};

// OtherCertID ::= SEQUENCE {
//     otherCertHash  OtherHash,
//     issuerSerial   IssuerSerial OPTIONAL }     RFC 5126, 5.7.3.3
// CompleteCertificateRefs (6.2.1) is a SEQUENCE OF these.
class CAsn1OtherCertId : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OtherCertID";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1OtherHash* OtherCertHash() const { return m_otherCertHash; }
    CAsn1IssuerSerial* IssuerSerial() const { return m_issuerSerial; }

  private:
    CAsn1OtherHash* m_otherCertHash = nullptr;
    CAsn1IssuerSerial* m_issuerSerial = nullptr;
};

// OtherSigningCertificate ::= SEQUENCE {
//     certs     SEQUENCE OF OtherCertID,
//     policies  SEQUENCE OF PolicyInformation OPTIONAL }     RFC 5126, 5.7.3.3
class CAsn1OtherSigningCertificate : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OtherSigningCertificate";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1SequenceOf<CAsn1OtherCertId>* Certs() const { return m_certs; }
    CAsn1SequenceOf<CAsn1PolicyInformation>* Policies() const { return m_policies; }

  private:
    CAsn1SequenceOf<CAsn1OtherCertId>* m_certs = nullptr;
    CAsn1SequenceOf<CAsn1PolicyInformation>* m_policies = nullptr;
};
