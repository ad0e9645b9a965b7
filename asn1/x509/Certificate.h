#pragma once

#include "asn1/x509/TbsCertificate.h"

// Certificate ::= SEQUENCE {
//     tbsCertificate      TBSCertificate,   -- what is signed: its Raw()
//     signatureAlgorithm  AlgorithmIdentifier,
//     signatureValue      BIT STRING }     RFC 5280, 4.1
class CAsn1Certificate : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Certificate";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1TbsCertificate* TbsCertificate() const { return m_tbsCertificate; }
    CAsn1AlgorithmIdentifier* SignatureAlgorithm() const { return m_signatureAlgorithm; }
    CAsn1BitString* SignatureValue() const { return m_signatureValue; }

  private:
    CAsn1TbsCertificate* m_tbsCertificate = nullptr;
    CAsn1AlgorithmIdentifier* m_signatureAlgorithm = nullptr;
    CAsn1BitString* m_signatureValue = nullptr;
};
