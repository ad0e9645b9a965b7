#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"

// Attribute ::= SEQUENCE {
//     type    AttributeType,     -- OBJECT IDENTIFIER
//     values  SET OF AttributeValue }   -- ANY     RFC 5755, 4.1
class CAsn1Attribute : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Attribute";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ObjectIdentifier* Type() const { return m_type; }
    CAsn1SetOf<CAsn1Any>* Values() const { return m_values; }

  private:
    CAsn1ObjectIdentifier* m_type = nullptr;
    CAsn1SetOf<CAsn1Any>* m_values = nullptr;
};
