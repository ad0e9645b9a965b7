#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"
#include "asn1/Asn1Time.h"
#include "asn1/attributes/AttributeValues.h"
#include "asn1/cms/RecipientInfo.h"
#include "asn1/cms/SignerIdentifier.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/GeneralName.h"
#include "asn1/x509/Name.h"

// Attributes of RFC 2634, RFC 5035, RFC 6211 and RFC 8551.

// ContentHints ::= SEQUENCE {
//     contentDescription  UTF8String OPTIONAL,
//     contentType         ContentType }   -- OBJECT IDENTIFIER     RFC 2634, 2.9
class CAsn1ContentHints : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ContentHints";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1UTF8String* ContentDescription() const { return m_contentDescription; }
    CAsn1ObjectIdentifier* ContentType() const { return m_contentType; }

  private:
    CAsn1UTF8String* m_contentDescription = nullptr;
    CAsn1ObjectIdentifier* m_contentType = nullptr;
};

// ContentReference ::= SEQUENCE {
//     contentType               ContentType,     -- OBJECT IDENTIFIER
//     signedContentIdentifier   ContentIdentifier,     -- OCTET STRING
//     originatorSignatureValue  OCTET STRING }     RFC 2634, 2.11
class CAsn1ContentReference : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ContentReference";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ObjectIdentifier* ContentType() const { return m_contentType; }
    CAsn1OctetString* SignedContentIdentifier() const { return m_signedContentIdentifier; }
    CAsn1OctetString* OriginatorSignatureValue() const { return m_originatorSignatureValue; }

  private:
    CAsn1ObjectIdentifier* m_contentType = nullptr;
    CAsn1OctetString* m_signedContentIdentifier = nullptr;
    CAsn1OctetString* m_originatorSignatureValue = nullptr;
};

// ReceiptRequest ::= SEQUENCE {
//     signedContentIdentifier  ContentIdentifier,     -- OCTET STRING
//     receiptsFrom             CHOICE {
//         allOrFirstTier  [0] INTEGER { allReceipts (0), firstTierRecipients (1) },
//         receiptList     [1] SEQUENCE OF GeneralNames },
//     receiptsTo               SEQUENCE OF GeneralNames }     RFC 2634, 2.7
class CAsn1ReceiptRequest : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ReceiptRequest";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1OctetString* SignedContentIdentifier() const { return m_signedContentIdentifier; }
    CAsn1Integer* AllOrFirstTier() const { return m_allOrFirstTier; }
    CAsn1SequenceOf<CAsn1GeneralNames>* ReceiptList() const { return m_receiptList; }
    CAsn1SequenceOf<CAsn1GeneralNames>* ReceiptsTo() const { return m_receiptsTo; }

  private:
    CAsn1OctetString* m_signedContentIdentifier = nullptr;
    CAsn1Integer* m_allOrFirstTier = nullptr;
    CAsn1SequenceOf<CAsn1GeneralNames>* m_receiptList = nullptr;
    CAsn1SequenceOf<CAsn1GeneralNames>* m_receiptsTo = nullptr;
};

// ESSSecurityLabel ::= SET {
//     security-policy-identifier  SecurityPolicyIdentifier,     -- OBJECT IDENTIFIER
//     security-classification     SecurityClassification OPTIONAL,     -- INTEGER
//     privacy-mark                ESSPrivacyMark OPTIONAL,   -- PrintableString or UTF8String
//     security-categories         SET OF SecurityCategory OPTIONAL }     RFC 2634, 3.2
// In DER the members of a SET stand in the order of their tags; the written order is taken, too.
class CAsn1EssSecurityLabel : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ESSSecurityLabel";
    static constexpr unsigned char kTag = kAsn1Set;

    void Decode() override;

    CAsn1ObjectIdentifier* SecurityPolicyIdentifier() const { return m_securityPolicyIdentifier; }
    CAsn1Integer* SecurityClassification() const { return m_securityClassification; }
    CAsn1DirectoryString* PrivacyMark() const { return m_privacyMark; }
    CAsn1SetOf<CAsn1SecurityCategory>* SecurityCategories() const { return m_securityCategories; }

  private:
    CAsn1ObjectIdentifier* m_securityPolicyIdentifier = nullptr;
    CAsn1Integer* m_securityClassification = nullptr;
    CAsn1DirectoryString* m_privacyMark = nullptr;
    CAsn1SetOf<CAsn1SecurityCategory>* m_securityCategories = nullptr;
};

// SMIMECapability ::= SEQUENCE {
//     capabilityID  OBJECT IDENTIFIER,
//     parameters    ANY DEFINED BY capabilityID OPTIONAL }     RFC 8551, 2.5.2
class CAsn1SmimeCapability : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "SMIMECapability";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ObjectIdentifier* CapabilityId() const { return m_capabilityId; }
    CAsn1Any* Parameters() const { return m_parameters; }

  private:
    CAsn1ObjectIdentifier* m_capabilityId = nullptr;
    CAsn1Any* m_parameters = nullptr;
};

// SMIMEEncryptionKeyPreference ::= CHOICE {
//     issuerAndSerialNumber    [0] IssuerAndSerialNumber,
//     receipentKeyId           [1] RecipientKeyIdentifier,
//     subjectAltKeyIdentifier  [2] SubjectKeyIdentifier }   -- OCTET STRING     RFC 8551, 2.5.3
// The tags are implicit.
class CAsn1SmimeEncryptionKeyPreference : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "SMIMEEncryptionKeyPreference";
    static bool Accepts(unsigned char tag) { return (tag & kAsn1ContextBit) != 0; }

    void Decode() override;

    CAsn1IssuerAndSerialNumber* IssuerAndSerialNumber() const { return m_issuerAndSerialNumber; }
    CAsn1RecipientKeyIdentifier* RecipientKeyId() const { return m_recipientKeyId; }
    CAsn1OctetString* SubjectAltKeyIdentifier() const { return m_subjectAltKeyIdentifier; }

  private:
    CAsn1IssuerAndSerialNumber* m_issuerAndSerialNumber = nullptr;
    CAsn1RecipientKeyIdentifier* m_recipientKeyId = nullptr;
    CAsn1OctetString* m_subjectAltKeyIdentifier = nullptr;
};

// CMSAlgorithmProtection ::= SEQUENCE {
//     digestAlgorithm     DigestAlgorithmIdentifier,
//     signatureAlgorithm  [1] SignatureAlgorithmIdentifier OPTIONAL,
//     macAlgorithm        [2] MessageAuthenticationCodeAlgorithm OPTIONAL }     RFC 6211, 2
class CAsn1CmsAlgorithmProtection : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "CMSAlgorithmProtection";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1AlgorithmIdentifier* DigestAlgorithm() const { return m_digestAlgorithm; }
    CAsn1AlgorithmIdentifier* SignatureAlgorithm() const { return m_signatureAlgorithm; }
    CAsn1AlgorithmIdentifier* MacAlgorithm() const { return m_macAlgorithm; }

  private:
    CAsn1AlgorithmIdentifier* m_digestAlgorithm = nullptr;
    CAsn1AlgorithmIdentifier* m_signatureAlgorithm = nullptr;
    CAsn1AlgorithmIdentifier* m_macAlgorithm = nullptr;
};

// MLData ::= SEQUENCE {
//     mailListIdentifier  EntityIdentifier,     -- as SignerIdentifier, [0] left out
//     expansionTime       GeneralizedTime,
//     mlReceiptPolicy     MLReceiptPolicy OPTIONAL }     RFC 2634, 4.4
class CAsn1MlData : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "MLData";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Any* MailListIdentifier() const { return m_mailListIdentifier; }
    CAsn1GeneralizedTime* ExpansionTime() const { return m_expansionTime; }
    CAsn1Any* MlReceiptPolicy() const { return m_mlReceiptPolicy; }

  private:
    CAsn1Any* m_mailListIdentifier = nullptr;
    CAsn1GeneralizedTime* m_expansionTime = nullptr;
    CAsn1Any* m_mlReceiptPolicy = nullptr;
};
