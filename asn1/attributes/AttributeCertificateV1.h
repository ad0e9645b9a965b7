#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/attributes/AttributeCertificate.h"

// The form of X.509 (1997), which old messages carry.

// CHOICE { baseCertificateID [0] EXPLICIT IssuerSerial,
//          subjectName       [1] EXPLICIT GeneralNames }     RFC 5652, 12.2
class CAsn1AttCertSubject : public CAsn1TypedObject {
    CA_ASN1_CHOICE("AttributeCertificateInfoV1.subject");
    CA_ASN1_ALTERNATIVE_EXPLICIT(0, CAsn1IssuerSerial, BaseCertificateId, "baseCertificateID");
    CA_ASN1_ALTERNATIVE_EXPLICIT(1, CAsn1GeneralNames, SubjectName, "subjectName");
    CA_ASN1_END;
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
    CA_ASN1_SEQUENCE("AttributeCertificateV1");
    CA_ASN1_REQUIRED(CAsn1AttributeCertificateInfoV1, AcInfo, "acInfo");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, SignatureAlgorithm, "signatureAlgorithm");
    CA_ASN1_REQUIRED(CAsn1BitString, Signature, "signature");
    CA_ASN1_END;
};
