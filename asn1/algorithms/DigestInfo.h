#pragma once

#include "asn1/Asn1Primitives.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// DigestInfo ::= SEQUENCE {
//     digestAlgorithm  AlgorithmIdentifier,
//     digest           OCTET STRING }     RFC 8017, 9.2
class CAsn1DigestInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "DigestInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1AlgorithmIdentifier* DigestAlgorithm() const { return m_digestAlgorithm; }
    const CAsn1OctetString* Digest() const { return m_digest; }

  private:
    CAsn1AlgorithmIdentifier* m_digestAlgorithm = nullptr;
    CAsn1OctetString* m_digest = nullptr;
};
