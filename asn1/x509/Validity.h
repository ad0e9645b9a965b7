#pragma once

#include "asn1/Asn1Time.h"
#include "asn1/Asn1Typed.h"

// Validity ::= SEQUENCE { notBefore Time, notAfter Time }     RFC 5280, 4.1.2.5
// The times are not decoded: what a two-digit year means here is not what CAsn1UTCTime makes of it.
class CAsn1Validity : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Validity";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Time* NotBefore() const { return m_notBefore; }
    CAsn1Time* NotAfter() const { return m_notAfter; }

  private:
    CAsn1Time* m_notBefore = nullptr;
    CAsn1Time* m_notAfter = nullptr;
};
