#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/attributes/Attribute.h"
#include "asn1/cms/ContentInfo.h"
#include "asn1/cms/RecipientInfo.h"
#include "asn1/cms/SignerInfo.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// OriginatorInfo ::= SEQUENCE {
//     certs  [0] IMPLICIT SET OF CertificateChoices OPTIONAL,
//     crls   [1] IMPLICIT SET OF RevocationInfoChoice OPTIONAL }     RFC 5652, 6.1
class CAsn1OriginatorInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OriginatorInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1SetOf<CAsn1Any>* Certs() const { return m_certs; }
    CAsn1SetOf<CAsn1Any>* Crls() const { return m_crls; }

  private:
    CAsn1SetOf<CAsn1Any>* m_certs = nullptr;
    CAsn1SetOf<CAsn1Any>* m_crls = nullptr;
};

// EncryptedContentInfo ::= SEQUENCE {
//     contentType                 ContentType,     -- OBJECT IDENTIFIER
//     contentEncryptionAlgorithm  ContentEncryptionAlgorithmIdentifier,
//     encryptedContent            [0] IMPLICIT OCTET STRING OPTIONAL }     RFC 5652, 6.1
class CAsn1EncryptedContentInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "EncryptedContentInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ObjectIdentifier* ContentType() const { return m_contentType; }
    CAsn1AlgorithmIdentifier* ContentEncryptionAlgorithm() const {
        return m_contentEncryptionAlgorithm;
    }
    CAsn1OctetString* EncryptedContent() const { return m_encryptedContent; }

  private:
    CAsn1ObjectIdentifier* m_contentType = nullptr;
    CAsn1AlgorithmIdentifier* m_contentEncryptionAlgorithm = nullptr;
    CAsn1OctetString* m_encryptedContent = nullptr;
};

// EnvelopedData ::= SEQUENCE {
//     version               CMSVersion,     -- INTEGER
//     originatorInfo        [0] IMPLICIT OriginatorInfo OPTIONAL,
//     recipientInfos        SET OF RecipientInfo,
//     encryptedContentInfo  EncryptedContentInfo,
//     unprotectedAttrs      [1] IMPLICIT SET OF Attribute OPTIONAL }     RFC 5652, 6.1
class CAsn1EnvelopedData : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "EnvelopedData";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Version() const { return m_version; }
    CAsn1OriginatorInfo* OriginatorInfo() const { return m_originatorInfo; }
    CAsn1SetOf<CAsn1RecipientInfo>* RecipientInfos() const { return m_recipientInfos; }
    CAsn1EncryptedContentInfo* EncryptedContentInfo() const { return m_encryptedContentInfo; }
    CAsn1SetOf<CAsn1Attribute>* UnprotectedAttrs() const { return m_unprotectedAttrs; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1OriginatorInfo* m_originatorInfo = nullptr;
    CAsn1SetOf<CAsn1RecipientInfo>* m_recipientInfos = nullptr;
    CAsn1EncryptedContentInfo* m_encryptedContentInfo = nullptr;
    CAsn1SetOf<CAsn1Attribute>* m_unprotectedAttrs = nullptr;
};

// AuthEnvelopedData ::= SEQUENCE {
//     version                   CMSVersion,     -- INTEGER
//     originatorInfo            [0] IMPLICIT OriginatorInfo OPTIONAL,
//     recipientInfos            SET OF RecipientInfo,
//     authEncryptedContentInfo  EncryptedContentInfo,
//     authAttrs                 [1] IMPLICIT SET OF Attribute OPTIONAL,
//     mac                       MessageAuthenticationCode,     -- OCTET STRING
//     unauthAttrs               [2] IMPLICIT SET OF Attribute OPTIONAL }     RFC 5083, 2.1
class CAsn1AuthEnvelopedData : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "AuthEnvelopedData";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Version() const { return m_version; }
    CAsn1OriginatorInfo* OriginatorInfo() const { return m_originatorInfo; }
    CAsn1SetOf<CAsn1RecipientInfo>* RecipientInfos() const { return m_recipientInfos; }
    CAsn1EncryptedContentInfo* AuthEncryptedContentInfo() const {
        return m_authEncryptedContentInfo;
    }
    CAsn1SetOf<CAsn1Attribute>* AuthAttrs() const { return m_authAttrs; }
    CAsn1OctetString* Mac() const { return m_mac; }
    CAsn1SetOf<CAsn1Attribute>* UnauthAttrs() const { return m_unauthAttrs; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1OriginatorInfo* m_originatorInfo = nullptr;
    CAsn1SetOf<CAsn1RecipientInfo>* m_recipientInfos = nullptr;
    CAsn1EncryptedContentInfo* m_authEncryptedContentInfo = nullptr;
    CAsn1SetOf<CAsn1Attribute>* m_authAttrs = nullptr;
    CAsn1OctetString* m_mac = nullptr;
    CAsn1SetOf<CAsn1Attribute>* m_unauthAttrs = nullptr;
};

// AuthenticatedData ::= SEQUENCE {
//     version           CMSVersion,     -- INTEGER
//     originatorInfo    [0] IMPLICIT OriginatorInfo OPTIONAL,
//     recipientInfos    SET OF RecipientInfo,
//     macAlgorithm      MessageAuthenticationCodeAlgorithm,
//     digestAlgorithm   [1] DigestAlgorithmIdentifier OPTIONAL,
//     encapContentInfo  EncapsulatedContentInfo,
//     authAttrs         [2] IMPLICIT SET OF Attribute OPTIONAL,
//     mac               MessageAuthenticationCode,     -- OCTET STRING
//     unauthAttrs       [3] IMPLICIT SET OF Attribute OPTIONAL }     RFC 5652, 9.1
class CAsn1AuthenticatedData : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "AuthenticatedData";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Version() const { return m_version; }
    CAsn1OriginatorInfo* OriginatorInfo() const { return m_originatorInfo; }
    CAsn1SetOf<CAsn1RecipientInfo>* RecipientInfos() const { return m_recipientInfos; }
    CAsn1AlgorithmIdentifier* MacAlgorithm() const { return m_macAlgorithm; }
    CAsn1AlgorithmIdentifier* DigestAlgorithm() const { return m_digestAlgorithm; }
    CAsn1EncapsulatedContentInfo* EncapContentInfo() const { return m_encapContentInfo; }
    CAsn1SetOf<CAsn1Attribute>* AuthAttrs() const { return m_authAttrs; }
    CAsn1OctetString* Mac() const { return m_mac; }
    CAsn1SetOf<CAsn1Attribute>* UnauthAttrs() const { return m_unauthAttrs; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1OriginatorInfo* m_originatorInfo = nullptr;
    CAsn1SetOf<CAsn1RecipientInfo>* m_recipientInfos = nullptr;
    CAsn1AlgorithmIdentifier* m_macAlgorithm = nullptr;
    CAsn1AlgorithmIdentifier* m_digestAlgorithm = nullptr;
    CAsn1EncapsulatedContentInfo* m_encapContentInfo = nullptr;
    CAsn1SetOf<CAsn1Attribute>* m_authAttrs = nullptr;
    CAsn1OctetString* m_mac = nullptr;
    CAsn1SetOf<CAsn1Attribute>* m_unauthAttrs = nullptr;
};

// SignedAndEnvelopedData ::= SEQUENCE {
//     version               Version,     -- INTEGER
//     recipientInfos        SET OF RecipientInfo,
//     digestAlgorithms      SET OF DigestAlgorithmIdentifier,
//     encryptedContentInfo  EncryptedContentInfo,
//     certificates          [0] IMPLICIT SET OF CertificateChoices OPTIONAL,
//     crls                  [1] IMPLICIT SET OF RevocationInfoChoice OPTIONAL,
//     signerInfos           SET OF SignerInfo }     RFC 2315, 11.1
class CAsn1SignedAndEnvelopedData : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "SignedAndEnvelopedData";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Version() const { return m_version; }
    CAsn1SetOf<CAsn1RecipientInfo>* RecipientInfos() const { return m_recipientInfos; }
    CAsn1SetOf<CAsn1AlgorithmIdentifier>* DigestAlgorithms() const { return m_digestAlgorithms; }
    CAsn1EncryptedContentInfo* EncryptedContentInfo() const { return m_encryptedContentInfo; }
    CAsn1SetOf<CAsn1Any>* Certificates() const { return m_certificates; }
    CAsn1SetOf<CAsn1Any>* Crls() const { return m_crls; }
    CAsn1SetOf<CAsn1SignerInfo>* SignerInfos() const { return m_signerInfos; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1SetOf<CAsn1RecipientInfo>* m_recipientInfos = nullptr;
    CAsn1SetOf<CAsn1AlgorithmIdentifier>* m_digestAlgorithms = nullptr;
    CAsn1EncryptedContentInfo* m_encryptedContentInfo = nullptr;
    CAsn1SetOf<CAsn1Any>* m_certificates = nullptr;
    CAsn1SetOf<CAsn1Any>* m_crls = nullptr;
    CAsn1SetOf<CAsn1SignerInfo>* m_signerInfos = nullptr;
};
