#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/attributes/Attribute.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/Name.h"
#include "asn1/x509/SubjectPublicKeyInfo.h"

// CertificationRequestInfo ::= SEQUENCE {
//     version        INTEGER,
//     subject        Name,
//     subjectPKInfo  SubjectPublicKeyInfo,
//     attributes     [0] IMPLICIT SET OF Attribute }     RFC 2986, 4.1
// Some senders leave out the attributes where they have none.
class CAsn1CertificationRequestInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "CertificationRequestInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Version() const { return m_version; }
    const CAsn1Name* Subject() const { return m_subject; }
    const CAsn1SubjectPublicKeyInfo* SubjectPkInfo() const { return m_subjectPKInfo; }
    const CAsn1SetOf<CAsn1Attribute>* Attributes() const { return m_attributes; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1Name* m_subject = nullptr;
    CAsn1SubjectPublicKeyInfo* m_subjectPKInfo = nullptr;
    CAsn1SetOf<CAsn1Attribute>* m_attributes = nullptr;
};

// CertificationRequest ::= SEQUENCE {
//     certificationRequestInfo  CertificationRequestInfo,
//     signatureAlgorithm        AlgorithmIdentifier,
//     signature                 BIT STRING }     RFC 2986, 4.2
class CAsn1CertificationRequest : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "CertificationRequest";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1CertificationRequestInfo* CertificationRequestInfo() const {
        return m_certificationRequestInfo;
    }
    const CAsn1AlgorithmIdentifier* SignatureAlgorithm() const { return m_signatureAlgorithm; }
    const CAsn1BitString* Signature() const { return m_signature; }

  private:
    CAsn1CertificationRequestInfo* m_certificationRequestInfo = nullptr;
    CAsn1AlgorithmIdentifier* m_signatureAlgorithm = nullptr;
    CAsn1BitString* m_signature = nullptr;
};
