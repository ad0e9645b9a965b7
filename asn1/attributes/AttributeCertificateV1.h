#pragma once

#include "asn1/attributes/AttributeCertificate.h"

// The form of X.509 (1997), which old messages carry.

// CHOICE { baseCertificateID [0] EXPLICIT IssuerSerial,
//          subjectName       [1] EXPLICIT GeneralNames }     RFC 5652, 12.2
class CAsn1AttCertSubject : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "AttributeCertificateInfoV1.subject";
    static bool Accepts(unsigned char tag) {
        return (tag & ~1U) == (kAsn1ContextBit | kAsn1ConstructedBit);
    }

    void Decode() override;

    CAsn1IssuerSerial* BaseCertificateId() const { return m_baseCertificateId; }
    CAsn1GeneralNames* SubjectName() const { return m_subjectName; }

  private:
    CAsn1IssuerSerial* m_baseCertificateId = nullptr;
    CAsn1GeneralNames* m_subjectName = nullptr;
};

// AttributeCertificateInfoV1 ::= SEQUENCE {
//     version                AttCertVersionV1 DEFAULT v1,     -- INTEGER
//     subject                CHOICE { ... },
//     issuer                 GeneralNames,
//     ... }     -- what both versions have     RFC 5652, 12.2
class CAsn1AttributeCertificateInfoV1 : public CAsn1AttributeCertificateFacts {
  public:
    using CAsn1AttributeCertificateFacts::CAsn1AttributeCertificateFacts;
    static constexpr const char* kName = "AttributeCertificateInfoV1";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Version() const { return m_version; }
    CAsn1AttCertSubject* Subject() const { return m_subject; }
    CAsn1GeneralNames* Issuer() const { return m_issuer; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1AttCertSubject* m_subject = nullptr;
    CAsn1GeneralNames* m_issuer = nullptr;
};

// AttributeCertificateV1 ::= SEQUENCE {
//     acInfo              AttributeCertificateInfoV1,
//     signatureAlgorithm  AlgorithmIdentifier,
//     signature           BIT STRING }     RFC 5652, 12.2
class CAsn1AttributeCertificateV1 : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "AttributeCertificateV1";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1AttributeCertificateInfoV1* AcInfo() const { return m_acInfo; }
    CAsn1AlgorithmIdentifier* SignatureAlgorithm() const { return m_signatureAlgorithm; }
    CAsn1BitString* Signature() const { return m_signature; }

  private:
    CAsn1AttributeCertificateInfoV1* m_acInfo = nullptr;
    CAsn1AlgorithmIdentifier* m_signatureAlgorithm = nullptr;
    CAsn1BitString* m_signature = nullptr;
};
