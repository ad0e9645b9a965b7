#pragma once

#include "asn1/x509/AlgorithmIdentifier.h"

// SubjectPublicKeyInfo ::= SEQUENCE {
//     algorithm         AlgorithmIdentifier,
//     subjectPublicKey  BIT STRING }     RFC 5280, 4.1.2.7
class CAsn1SubjectPublicKeyInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "SubjectPublicKeyInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1AlgorithmIdentifier* Algorithm() const { return m_algorithm; }
    CAsn1BitString* SubjectPublicKey() const { return m_subjectPublicKey; }

  private:
    CAsn1AlgorithmIdentifier* m_algorithm = nullptr;
    CAsn1BitString* m_subjectPublicKey = nullptr;
};
