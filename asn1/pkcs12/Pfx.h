#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/algorithms/DigestInfo.h"
#include "asn1/attributes/Attribute.h"
#include "asn1/cms/ContentInfo.h"

// MacData ::= SEQUENCE {
//     mac         DigestInfo,
//     macSalt     OCTET STRING,
//     iterations  INTEGER DEFAULT 1 }     RFC 7292, 4
class CAsn1MacData : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "MacData";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1DigestInfo* Mac() const { return m_mac; }
    const CAsn1OctetString* MacSalt() const { return m_macSalt; }
    /// Null for 1.
    const CAsn1Integer* Iterations() const { return m_iterations; }

  private:
    CAsn1DigestInfo* m_mac = nullptr;
    CAsn1OctetString* m_macSalt = nullptr;
    CAsn1Integer* m_iterations = nullptr;
};

// PFX ::= SEQUENCE {
//     version   INTEGER,
//     authSafe  ContentInfo,     -- its content: SEQUENCE OF ContentInfo
//     macData   MacData OPTIONAL }     RFC 7292, 4
class CAsn1Pfx : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "PFX";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Version() const { return m_version; }
    const CAsn1ContentInfo* AuthSafe() const { return m_authSafe; }
    const CAsn1MacData* MacData() const { return m_macData; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1ContentInfo* m_authSafe = nullptr;
    CAsn1MacData* m_macData = nullptr;
};

// SafeBag ::= SEQUENCE {
//     bagId          OBJECT IDENTIFIER,
//     bagValue       [0] EXPLICIT ANY DEFINED BY bagId,
//     bagAttributes  SET OF PKCS12Attribute OPTIONAL }     RFC 7292, 4.2
// An attribute is built as one of X.501. SafeContents is a SEQUENCE OF these.
class CAsn1SafeBag : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "SafeBag";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ObjectIdentifier* BagId() const { return m_bagId; }
    const CAsn1Any* BagValue() const { return m_bagValue; }
    const CAsn1SetOf<CAsn1Attribute>* BagAttributes() const { return m_bagAttributes; }

  private:
    CAsn1ObjectIdentifier* m_bagId = nullptr;
    CAsn1Any* m_bagValue = nullptr;
    CAsn1SetOf<CAsn1Attribute>* m_bagAttributes = nullptr;
};

// CertBag ::= SEQUENCE {
//     certId     OBJECT IDENTIFIER,
//     certValue  [0] EXPLICIT ANY DEFINED BY certId }     RFC 7292, 4.2.3
// CRLBag (4.2.4) and SecretBag (4.2.5) are the same.
class CAsn1TypedBag : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "CertBag";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ObjectIdentifier* Type() const { return m_certId; }
    const CAsn1Any* Value() const { return m_certValue; }

  private:
    CAsn1ObjectIdentifier* m_certId = nullptr;
    CAsn1Any* m_certValue = nullptr;
};
