#pragma once

#include "asn1/Asn1List.h"
#include "asn1/attributes/Attribute.h"
#include "asn1/cms/ContentInfo.h"

// ContentWithAttributes ::= SEQUENCE {
//     content  ContentInfo,
//     attrs    SEQUENCE OF Attribute }     RFC 4073, 3
// A ContentCollection (2) is a SEQUENCE OF ContentInfo.
class CAsn1ContentWithAttributes : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ContentWithAttributes";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ContentInfo* Content() const { return m_content; }
    const CAsn1SequenceOf<CAsn1Any>* Attrs() const { return m_attrs; }

  private:
    CAsn1ContentInfo* m_content = nullptr;
    CAsn1SequenceOf<CAsn1Any>* m_attrs = nullptr;
};
