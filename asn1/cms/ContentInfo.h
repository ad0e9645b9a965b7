#pragma once

#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Typed.h"

// ContentInfo ::= SEQUENCE {
//     contentType  ContentType,     -- OBJECT IDENTIFIER
//     content      [0] EXPLICIT ANY DEFINED BY contentType OPTIONAL }     RFC 5652, 3; RFC 2315, 7
// RFC 5652 requires the content; RFC 2315 leaves it out where it is elsewhere.
class CAsn1ContentInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ContentInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ObjectIdentifier* ContentType() const { return m_contentType; }
    CAsn1Any* Content() const { return m_content; }

  private:
    CAsn1ObjectIdentifier* m_contentType = nullptr;
    CAsn1Any* m_content = nullptr;
};

// EncapsulatedContentInfo ::= SEQUENCE {
//     eContentType  ContentType,     -- OBJECT IDENTIFIER
//     eContent      [0] EXPLICIT OCTET STRING OPTIONAL }     RFC 5652, 5.2
// In RFC 2315 (9.1) the content is of any type.
class CAsn1EncapsulatedContentInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "EncapsulatedContentInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ObjectIdentifier* EContentType() const { return m_eContentType; }
    CAsn1Any* EContent() const { return m_eContent; }

  private:
    CAsn1ObjectIdentifier* m_eContentType = nullptr;
    CAsn1Any* m_eContent = nullptr;
};
