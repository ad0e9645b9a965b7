#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/attributes/Attribute.h"
#include "asn1/cms/ContentInfo.h"
#include "asn1/cms/EnvelopedData.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// EncryptedData ::= SEQUENCE {
//     version               CMSVersion,     -- INTEGER
//     encryptedContentInfo  EncryptedContentInfo,
//     unprotectedAttrs      [1] IMPLICIT SET OF Attribute OPTIONAL }     RFC 5652, 8
class CAsn1EncryptedData : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "EncryptedData";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Version() const { return m_version; }
    CAsn1EncryptedContentInfo* EncryptedContentInfo() const { return m_encryptedContentInfo; }
    CAsn1SetOf<CAsn1Attribute>* UnprotectedAttrs() const { return m_unprotectedAttrs; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1EncryptedContentInfo* m_encryptedContentInfo = nullptr;
    CAsn1SetOf<CAsn1Attribute>* m_unprotectedAttrs = nullptr;
};

// DigestedData ::= SEQUENCE {
//     version           CMSVersion,     -- INTEGER
//     digestAlgorithm   DigestAlgorithmIdentifier,
//     encapContentInfo  EncapsulatedContentInfo,
//     digest            Digest }   -- OCTET STRING     RFC 5652, 7
class CAsn1DigestedData : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "DigestedData";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Version() const { return m_version; }
    CAsn1AlgorithmIdentifier* DigestAlgorithm() const { return m_digestAlgorithm; }
    CAsn1EncapsulatedContentInfo* EncapContentInfo() const { return m_encapContentInfo; }
    CAsn1OctetString* Digest() const { return m_digest; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1AlgorithmIdentifier* m_digestAlgorithm = nullptr;
    CAsn1EncapsulatedContentInfo* m_encapContentInfo = nullptr;
    CAsn1OctetString* m_digest = nullptr;
};
