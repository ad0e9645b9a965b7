#pragma once

#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"
#include "asn1/Asn1Typed.h"

// Attributes that makers of trusted platform modules and of platforms give (TCG Credential
// Profiles; TCG Platform Attribute Credential Profile).

// TPMSpecification ::= SEQUENCE {
//     family    UTF8String,
//     level     INTEGER,
//     revision  INTEGER }
class CAsn1TpmSpecification : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "TPMSpecification";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1UTF8String* Family() const { return m_family; }
    const CAsn1Integer* Level() const { return m_level; }
    const CAsn1Integer* Revision() const { return m_revision; }

  private:
    CAsn1UTF8String* m_family = nullptr;
    CAsn1Integer* m_level = nullptr;
    CAsn1Integer* m_revision = nullptr;
};

// TCGSpecificationVersion ::= SEQUENCE {
//     majorVersion  INTEGER,
//     minorVersion  INTEGER,
//     revision      INTEGER }
class CAsn1TcgSpecificationVersion : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "TCGSpecificationVersion";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* MajorVersion() const { return m_majorVersion; }
    const CAsn1Integer* MinorVersion() const { return m_minorVersion; }
    const CAsn1Integer* Revision() const { return m_revision; }

  private:
    CAsn1Integer* m_majorVersion = nullptr;
    CAsn1Integer* m_minorVersion = nullptr;
    CAsn1Integer* m_revision = nullptr;
};

// TCGPlatformSpecification ::= SEQUENCE {
//     version        TCGSpecificationVersion,
//     platformClass  OCTET STRING }   -- 4 octets; some issuers write a text
class CAsn1TcgPlatformSpecification : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "TCGPlatformSpecification";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1TcgSpecificationVersion* Version() const { return m_version; }
    const CAsn1Any* PlatformClass() const { return m_platformClass; }

  private:
    CAsn1TcgSpecificationVersion* m_version = nullptr;
    CAsn1Any* m_platformClass = nullptr;
};

// TCGCredentialSpecification ::= SEQUENCE {
//     version  TCGSpecificationVersion }   -- some issuers write its members only
class CAsn1TcgCredentialSpecification : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "TCGCredentialSpecification";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1TcgSpecificationVersion* Version() const { return m_version; }

  private:
    CAsn1TcgSpecificationVersion* m_version = nullptr;
};
