#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
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
    CA_ASN1_SEQUENCE("ContentHints");
    CA_ASN1_OPTIONAL(CAsn1UTF8String, ContentDescription, "contentDescription");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, ContentType, "contentType");
    CA_ASN1_END;
};

// ContentReference ::= SEQUENCE {
//     contentType               ContentType,     -- OBJECT IDENTIFIER
//     signedContentIdentifier   ContentIdentifier,     -- OCTET STRING
//     originatorSignatureValue  OCTET STRING }     RFC 2634, 2.11
class CAsn1ContentReference : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ContentReference");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, ContentType, "contentType");
    CA_ASN1_REQUIRED(CAsn1OctetString, SignedContentIdentifier, "signedContentIdentifier");
    CA_ASN1_REQUIRED(CAsn1OctetString, OriginatorSignatureValue, "originatorSignatureValue");
    CA_ASN1_END;
};

// ReceiptRequest ::= SEQUENCE {
//     signedContentIdentifier  ContentIdentifier,     -- OCTET STRING
//     receiptsFrom             CHOICE {
//         allOrFirstTier  [0] INTEGER { allReceipts (0), firstTierRecipients (1) },
//         receiptList     [1] SEQUENCE OF GeneralNames },
//     receiptsTo               SEQUENCE OF GeneralNames }     RFC 2634, 2.7
class CAsn1ReceiptRequest : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ReceiptRequest");
    CA_ASN1_REQUIRED(CAsn1OctetString, SignedContentIdentifier, "signedContentIdentifier");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1Integer, AllOrFirstTier, "allOrFirstTier");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1SequenceOf<CAsn1GeneralNames>, ReceiptList, "receiptList");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1GeneralNames>, ReceiptsTo, "receiptsTo");
    CA_ASN1_END;
};

// ESSSecurityLabel ::= SET {
//     security-policy-identifier  SecurityPolicyIdentifier,     -- OBJECT IDENTIFIER
//     security-classification     SecurityClassification OPTIONAL,     -- INTEGER
//     privacy-mark                ESSPrivacyMark OPTIONAL,   -- PrintableString or UTF8String
//     security-categories         SET OF SecurityCategory OPTIONAL }     RFC 2634, 3.2
// In DER the members of a SET stand in the order of their tags; the written order is taken, too: a
// list of members has one order, so Decode() is written out.
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
    CA_ASN1_SEQUENCE("SMIMECapability");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, CapabilityId, "capabilityID");
    CA_ASN1_OPTIONAL(CAsn1Any, Parameters, "parameters");
    CA_ASN1_END;
};

// SMIMEEncryptionKeyPreference ::= CHOICE {
//     issuerAndSerialNumber    [0] IssuerAndSerialNumber,
//     receipentKeyId           [1] RecipientKeyIdentifier,
//     subjectAltKeyIdentifier  [2] SubjectKeyIdentifier }   -- OCTET STRING     RFC 8551, 2.5.3
// The tags are implicit.
class CAsn1SmimeEncryptionKeyPreference : public CAsn1TypedObject {
    CA_ASN1_CHOICE("SMIMEEncryptionKeyPreference");
    CA_ASN1_ALTERNATIVE_IMPLICIT(0, CAsn1IssuerAndSerialNumber, IssuerAndSerialNumber,
                                 "issuerAndSerialNumber");
    CA_ASN1_ALTERNATIVE_IMPLICIT(1, CAsn1RecipientKeyIdentifier, RecipientKeyId, "receipentKeyId");
    CA_ASN1_ALTERNATIVE_IMPLICIT(2, CAsn1OctetString, SubjectAltKeyIdentifier,
                                 "subjectAltKeyIdentifier");
    CA_ASN1_END;
};

// CMSAlgorithmProtection ::= SEQUENCE {
//     digestAlgorithm     DigestAlgorithmIdentifier,
//     signatureAlgorithm  [1] SignatureAlgorithmIdentifier OPTIONAL,
//     macAlgorithm        [2] MessageAuthenticationCodeAlgorithm OPTIONAL }     RFC 6211, 2
class CAsn1CmsAlgorithmProtection : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("CMSAlgorithmProtection");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, DigestAlgorithm, "digestAlgorithm");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1AlgorithmIdentifier, SignatureAlgorithm,
                              "signatureAlgorithm");
    CA_ASN1_OPTIONAL_IMPLICIT(2, CAsn1AlgorithmIdentifier, MacAlgorithm, "macAlgorithm");
    CA_ASN1_END;
};

// MLData ::= SEQUENCE {
//     mailListIdentifier  EntityIdentifier,     -- as SignerIdentifier, [0] left out
//     expansionTime       GeneralizedTime,
//     mlReceiptPolicy     MLReceiptPolicy OPTIONAL }     RFC 2634, 4.4
class CAsn1MlData : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("MLData");
    CA_ASN1_REQUIRED(CAsn1Any, MailListIdentifier, "mailListIdentifier");
    CA_ASN1_REQUIRED(CAsn1GeneralizedTime, ExpansionTime, "expansionTime");
    CA_ASN1_OPTIONAL(CAsn1Any, MlReceiptPolicy, "mlReceiptPolicy");
    CA_ASN1_END;
};
