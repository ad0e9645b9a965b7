#pragma once

#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Typed.h"
#include "asn1/x509/GeneralName.h"

// EntrustVersInfoSyntax ::= SEQUENCE {
//     entrustVers       GeneralString,
//     entrustInfoFlags  EntrustInfoFlags OPTIONAL }
// EntrustInfoFlags ::= BIT STRING {
//     keyUpdateAllowed(0), newExtensions(1), pKIXCertificate(2), enterpriseCategory(3),
//     webCategory(4), sETCategory(5) }     Entrust PKI
class CAsn1EntrustVersInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "EntrustVersInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Any* EntrustVers() const { return m_entrustVers; }
    const CAsn1BitString* EntrustInfoFlags() const { return m_entrustInfoFlags; }

  private:
    CAsn1Any* m_entrustVers = nullptr;
    CAsn1BitString* m_entrustInfoFlags = nullptr;
};

// Timestamp ::= SEQUENCE {
//     version       INTEGER { v1(1) },
//     location      GeneralName,
//     requiresAuth  BOOLEAN DEFAULT FALSE }     ISO 32000-2, 12.8.3.3.3
class CAsn1AdobeTimestamp : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "AdobeTimestamp";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Version() const { return m_version; }
    const CAsn1GeneralName* Location() const { return m_location; }
    bool RequiresAuth() const { return m_requiresAuth; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1GeneralName* m_location = nullptr;
    bool m_requiresAuth = false;
};

// ArchiveRevInfo ::= SEQUENCE {
//     version  INTEGER { v1(1) } }     ISO 32000-2, 12.8.3.3.3
class CAsn1AdobeArchiveRevInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "AdobeArchiveRevInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Version() const { return m_version; }

  private:
    CAsn1Integer* m_version = nullptr;
};
