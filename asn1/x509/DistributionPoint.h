#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Primitives.h"

/// DistributionPoint ::= SEQUENCE {                            RFC 5280, 4.2.1.13
///     distributionPoint  [0] DistributionPointName OPTIONAL,    -- a CHOICE, so explicit
///     reasons            [1] ReasonFlags OPTIONAL,
///     cRLIssuer          [2] GeneralNames OPTIONAL }
class CAsn1DistributionPoint : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "DistributionPoint";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Any* Name() const { return m_distributionPoint; }
    const CAsn1BitString* Reasons() const { return m_reasons; }
    const CAsn1SequenceOf<CAsn1Any>* CrlIssuer() const { return m_cRLIssuer; }

  private:
    CAsn1Any* m_distributionPoint = nullptr;
    CAsn1BitString* m_reasons = nullptr;
    CAsn1SequenceOf<CAsn1Any>* m_cRLIssuer = nullptr;
};

/// IssuingDistributionPoint ::= SEQUENCE {                     RFC 5280, 5.2.5
///     distributionPoint          [0] DistributionPointName OPTIONAL,
///     onlyContainsUserCerts      [1] BOOLEAN DEFAULT FALSE,
///     onlyContainsCACerts        [2] BOOLEAN DEFAULT FALSE,
///     onlySomeReasons            [3] ReasonFlags OPTIONAL,
///     indirectCRL                [4] BOOLEAN DEFAULT FALSE,
///     onlyContainsAttributeCerts [5] BOOLEAN DEFAULT FALSE }
class CAsn1IssuingDistributionPoint : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "IssuingDistributionPoint";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Any* Name() const { return m_distributionPoint; }
    bool OnlyContainsUserCerts() const { return m_onlyContainsUserCerts; }
    bool OnlyContainsCaCerts() const { return m_onlyContainsCACerts; }
    const CAsn1BitString* OnlySomeReasons() const { return m_onlySomeReasons; }
    bool IndirectCrl() const { return m_indirectCRL; }
    bool OnlyContainsAttributeCerts() const { return m_onlyContainsAttributeCerts; }

  private:
    CAsn1Any* m_distributionPoint = nullptr;
    bool m_onlyContainsUserCerts = false;
    bool m_onlyContainsCACerts = false;
    CAsn1BitString* m_onlySomeReasons = nullptr;
    bool m_indirectCRL = false;
    bool m_onlyContainsAttributeCerts = false;
};

/// AAissuingDistPointSyntax ::= SEQUENCE {     X.509, extensions of attribute revocation lists
///     distributionPoint           [0] DistributionPointName OPTIONAL,
///     onlySomeReasons             [1] ReasonFlags OPTIONAL,
///     indirectCRL                 [2] BOOLEAN DEFAULT FALSE,
///     containsUserAttributeCerts  [3] BOOLEAN DEFAULT TRUE,
///     containsAACerts             [4] BOOLEAN DEFAULT TRUE,
///     containsSOAPublicKeyCerts   [5] BOOLEAN DEFAULT TRUE }
class CAsn1AaIssuingDistributionPoint : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "AAissuingDistPointSyntax";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Any* Name() const { return m_distributionPoint; }
    const CAsn1BitString* OnlySomeReasons() const { return m_onlySomeReasons; }
    bool IndirectCrl() const { return m_indirectCRL; }
    bool ContainsUserAttributeCerts() const { return m_containsUserAttributeCerts; }
    bool ContainsAaCerts() const { return m_containsAACerts; }
    bool ContainsSoaPublicKeyCerts() const { return m_containsSOAPublicKeyCerts; }

  private:
    CAsn1Any* m_distributionPoint = nullptr;
    CAsn1BitString* m_onlySomeReasons = nullptr;
    bool m_indirectCRL = false;
    bool m_containsUserAttributeCerts = true;
    bool m_containsAACerts = true;
    bool m_containsSOAPublicKeyCerts = true;
};
