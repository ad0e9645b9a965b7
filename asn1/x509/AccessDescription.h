#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"

/// AccessDescription ::= SEQUENCE {                            RFC 5280, 4.2.2.1
///     accessMethod    OBJECT IDENTIFIER,
///     accessLocation  GeneralName }
class CAsn1AccessDescription : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "AccessDescription";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ObjectIdentifier* AccessMethod() const { return m_accessMethod; }
    const CAsn1Any* AccessLocation() const { return m_accessLocation; }

  private:
    CAsn1ObjectIdentifier* m_accessMethod = nullptr;
    CAsn1Any* m_accessLocation = nullptr;
};
