#pragma once

#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Typed.h"

// AlgorithmIdentifier ::= SEQUENCE {
//     algorithm   OBJECT IDENTIFIER,
//     parameters  ANY DEFINED BY algorithm OPTIONAL }     RFC 5280, 4.1.1.2
class CAsn1AlgorithmIdentifier : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "AlgorithmIdentifier";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ObjectIdentifier* Algorithm() const { return m_algorithm; }
    /// Null when there are none; a NULL when the algorithm writes its absence so.
    CAsn1Any* Parameters() const { return m_parameters; }

  private:
    CAsn1ObjectIdentifier* m_algorithm = nullptr;
    CAsn1Any* m_parameters = nullptr;
};
