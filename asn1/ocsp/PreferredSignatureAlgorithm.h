#pragma once

#include "asn1/x509/AlgorithmIdentifier.h"

// PreferredSignatureAlgorithm ::= SEQUENCE {
//     sigIdentifier        AlgorithmIdentifier,
//     pubKeyAlgIdentifier  SMIMECapability OPTIONAL }     RFC 6960, 4.4.7.1
// An SMIMECapability is built as an AlgorithmIdentifier. The extension is a SEQUENCE OF these.
class CAsn1PreferredSignatureAlgorithm : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "PreferredSignatureAlgorithm";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1AlgorithmIdentifier* SigIdentifier() const { return m_sigIdentifier; }
    const CAsn1AlgorithmIdentifier* PubKeyAlgIdentifier() const { return m_pubKeyAlgIdentifier; }

  private:
    CAsn1AlgorithmIdentifier* m_sigIdentifier = nullptr;
    CAsn1AlgorithmIdentifier* m_pubKeyAlgIdentifier = nullptr;
};
