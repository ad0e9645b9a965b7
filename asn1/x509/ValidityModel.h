#pragma once

#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Typed.h"

// ValidityModel ::= SEQUENCE {
//     validityModelId    OBJECT IDENTIFIER,
//     validityModelInfo  ANY DEFINED BY validityModelId OPTIONAL }
// Extension of the root certificates of German signature law.
class CAsn1ValidityModel : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ValidityModel";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ObjectIdentifier* ValidityModelId() const { return m_validityModelId; }
    const CAsn1Any* ValidityModelInfo() const { return m_validityModelInfo; }

  private:
    CAsn1ObjectIdentifier* m_validityModelId = nullptr;
    CAsn1Any* m_validityModelInfo = nullptr;
};
