#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Time.h"

/// PrivateKeyUsagePeriod ::= SEQUENCE {                        RFC 3280, 4.2.1.4
///     notBefore  [0] GeneralizedTime OPTIONAL,
///     notAfter   [1] GeneralizedTime OPTIONAL }
class CAsn1PrivateKeyUsagePeriod : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "PrivateKeyUsagePeriod";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1GeneralizedTime* NotBefore() const { return m_notBefore; }
    const CAsn1GeneralizedTime* NotAfter() const { return m_notAfter; }

  private:
    CAsn1GeneralizedTime* m_notBefore = nullptr;
    CAsn1GeneralizedTime* m_notAfter = nullptr;
};
