#pragma once

#include "asn1/Asn1Typed.h"

// CertificatePair ::= SEQUENCE {
//     issuedToThisCA  [0] EXPLICIT Certificate OPTIONAL,
//     issuedByThisCA  [1] EXPLICIT Certificate OPTIONAL }     ITU-T X.509, 11.2.3
class CAsn1CertificatePair : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "CertificatePair";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Any* IssuedToThisCa() const { return m_issuedToThisCA; }
    const CAsn1Any* IssuedByThisCa() const { return m_issuedByThisCA; }

  private:
    CAsn1Any* m_issuedToThisCA = nullptr;
    CAsn1Any* m_issuedByThisCA = nullptr;
};
