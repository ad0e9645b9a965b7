#pragma once

#include "asn1/crl/TbsCertList.h"

// CertificateList ::= SEQUENCE {
//     tbsCertList         TBSCertList,   -- what is signed: its Raw()
//     signatureAlgorithm  AlgorithmIdentifier,
//     signatureValue      BIT STRING }     RFC 5280, 5.1
class CAsn1CertificateList : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "CertificateList";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1TbsCertList* TbsCertList() const { return m_tbsCertList; }
    CAsn1AlgorithmIdentifier* SignatureAlgorithm() const { return m_signatureAlgorithm; }
    CAsn1BitString* SignatureValue() const { return m_signatureValue; }

  private:
    CAsn1TbsCertList* m_tbsCertList = nullptr;
    CAsn1AlgorithmIdentifier* m_signatureAlgorithm = nullptr;
    CAsn1BitString* m_signatureValue = nullptr;
};
