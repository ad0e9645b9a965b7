#pragma once

#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/Extension.h"
#include "asn1/x509/Name.h"
#include "asn1/x509/SubjectPublicKeyInfo.h"
#include "asn1/x509/Validity.h"

// TBSCertificate ::= SEQUENCE {
//     version          [0]  EXPLICIT Version DEFAULT v1,     -- INTEGER
//     serialNumber          CertificateSerialNumber,         -- INTEGER
//     signature             AlgorithmIdentifier,
//     issuer                Name,
//     validity              Validity,
//     subject               Name,
//     subjectPublicKeyInfo  SubjectPublicKeyInfo,
//     issuerUniqueID   [1]  IMPLICIT UniqueIdentifier OPTIONAL,     -- BIT STRING
//     subjectUniqueID  [2]  IMPLICIT UniqueIdentifier OPTIONAL,
//     extensions       [3]  EXPLICIT Extensions OPTIONAL }     RFC 5280, 4.1
class CAsn1TbsCertificate : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "TBSCertificate";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    /// Null for v1, which is left out.
    CAsn1Integer* Version() const { return m_version; }
    CAsn1Integer* SerialNumber() const { return m_serialNumber; }
    CAsn1AlgorithmIdentifier* Signature() const { return m_signature; }
    CAsn1Name* Issuer() const { return m_issuer; }
    CAsn1Validity* Validity() const { return m_validity; }
    CAsn1Name* Subject() const { return m_subject; }
    CAsn1SubjectPublicKeyInfo* SubjectPublicKeyInfo() const { return m_subjectPublicKeyInfo; }
    CAsn1BitString* IssuerUniqueId() const { return m_issuerUniqueId; }
    CAsn1BitString* SubjectUniqueId() const { return m_subjectUniqueId; }
    CAsn1Extensions* Extensions() const { return m_extensions; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1Integer* m_serialNumber = nullptr;
    CAsn1AlgorithmIdentifier* m_signature = nullptr;
    CAsn1Name* m_issuer = nullptr;
    CAsn1Validity* m_validity = nullptr;
    CAsn1Name* m_subject = nullptr;
    CAsn1SubjectPublicKeyInfo* m_subjectPublicKeyInfo = nullptr;
    CAsn1BitString* m_issuerUniqueId = nullptr;
    CAsn1BitString* m_subjectUniqueId = nullptr;
    CAsn1Extensions* m_extensions = nullptr;
};
