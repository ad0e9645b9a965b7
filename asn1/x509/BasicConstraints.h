#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Primitives.h"

/// BasicConstraints ::= SEQUENCE {                             RFC 5280, 4.2.1.9
///     cA                 BOOLEAN DEFAULT FALSE,
///     pathLenConstraint  INTEGER (0..MAX) OPTIONAL }
class CAsn1BasicConstraints : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "BasicConstraints";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    bool IsCa() const { return m_cA; }
    const CAsn1Integer* PathLenConstraint() const { return m_pathLenConstraint; }

  private:
    bool m_cA = false;
    CAsn1Integer* m_pathLenConstraint = nullptr;
};
