#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Primitives.h"

/// GeneralSubtree ::= SEQUENCE {                               RFC 5280, 4.2.1.10
///     base     GeneralName,
///     minimum  [0] INTEGER DEFAULT 0,
///     maximum  [1] INTEGER OPTIONAL }
class CAsn1GeneralSubtree : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "GeneralSubtree";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Any* Base() const { return m_base; }
    const CAsn1Integer* Minimum() const { return m_minimum; }
    const CAsn1Integer* Maximum() const { return m_maximum; }

  private:
    CAsn1Any* m_base = nullptr;
    CAsn1Integer* m_minimum = nullptr;
    CAsn1Integer* m_maximum = nullptr;
};

/// NameConstraints ::= SEQUENCE {                              RFC 5280, 4.2.1.10
///     permittedSubtrees  [0] GeneralSubtrees OPTIONAL,
///     excludedSubtrees   [1] GeneralSubtrees OPTIONAL }
class CAsn1NameConstraints : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "NameConstraints";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1SequenceOf<CAsn1GeneralSubtree>* PermittedSubtrees() const {
        return m_permittedSubtrees;
    }
    const CAsn1SequenceOf<CAsn1GeneralSubtree>* ExcludedSubtrees() const {
        return m_excludedSubtrees;
    }

  private:
    CAsn1SequenceOf<CAsn1GeneralSubtree>* m_permittedSubtrees = nullptr;
    CAsn1SequenceOf<CAsn1GeneralSubtree>* m_excludedSubtrees = nullptr;
};
