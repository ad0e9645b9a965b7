#include "asn1/attributes/EssAttributes.h"

#include "asn1/FieldReader.h"

void CAsn1ContentHints::Decode() {
    CFieldReader fields(*this);
    m_contentDescription = fields.Optional<CAsn1UTF8String>("contentDescription");
    m_contentType = fields.Required<CAsn1ObjectIdentifier>("contentType");
    fields.End();
}

void CAsn1ContentReference::Decode() {
    CFieldReader fields(*this);
    m_contentType = fields.Required<CAsn1ObjectIdentifier>("contentType");
    m_signedContentIdentifier = fields.Required<CAsn1OctetString>("signedContentIdentifier");
    m_originatorSignatureValue = fields.Required<CAsn1OctetString>("originatorSignatureValue");
    fields.End();
}

void CAsn1ReceiptRequest::Decode() {
    CFieldReader fields(*this);
    m_signedContentIdentifier = fields.Required<CAsn1OctetString>("signedContentIdentifier");
    m_allOrFirstTier = fields.OptionalImplicit<CAsn1Integer>(0, "allOrFirstTier");
    m_receiptList = fields.OptionalImplicit<CAsn1SequenceOf<CAsn1GeneralNames>>(1, "receiptList");
    m_receiptsTo = fields.Required<CAsn1SequenceOf<CAsn1GeneralNames>>("receiptsTo");
    fields.End();
}

void CAsn1EssSecurityLabel::Decode() {
    CFieldReader fields(*this);
    m_securityClassification = fields.Optional<CAsn1Integer>("security-classification");
    m_securityPolicyIdentifier =
        fields.Required<CAsn1ObjectIdentifier>("security-policy-identifier");
    if (m_securityClassification == nullptr) {
        m_securityClassification = fields.Optional<CAsn1Integer>("security-classification");
    }
    m_privacyMark = fields.Optional<CAsn1DirectoryString>("privacy-mark");
    m_securityCategories =
        fields.Optional<CAsn1SetOf<CAsn1SecurityCategory>>("security-categories");
    if (m_privacyMark == nullptr) {
        // Written in the order of the tags, a PrintableString stands behind a SET.
        m_privacyMark = fields.Optional<CAsn1DirectoryString>("privacy-mark");
    }
    fields.End();
}

void CAsn1SmimeCapability::Decode() {
    CFieldReader fields(*this);
    m_capabilityId = fields.Required<CAsn1ObjectIdentifier>("capabilityID");
    m_parameters = fields.OptionalAny("parameters");
    fields.End();
}

void CAsn1SmimeEncryptionKeyPreference::Decode() {
    CChoiceReader choice(*this);
    m_issuerAndSerialNumber =
        choice.Implicit<CAsn1IssuerAndSerialNumber>(0, "issuerAndSerialNumber");
    m_recipientKeyId = choice.Implicit<CAsn1RecipientKeyIdentifier>(1, "receipentKeyId");
    m_subjectAltKeyIdentifier = choice.Implicit<CAsn1OctetString>(2, "subjectAltKeyIdentifier");
    choice.End();
}

void CAsn1CmsAlgorithmProtection::Decode() {
    CFieldReader fields(*this);
    m_digestAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("digestAlgorithm");
    m_signatureAlgorithm =
        fields.OptionalImplicit<CAsn1AlgorithmIdentifier>(1, "signatureAlgorithm");
    m_macAlgorithm = fields.OptionalImplicit<CAsn1AlgorithmIdentifier>(2, "macAlgorithm");
    fields.End();
}

void CAsn1MlData::Decode() {
    CFieldReader fields(*this);
    m_mailListIdentifier = fields.RequiredAny("mailListIdentifier");
    m_expansionTime = fields.Required<CAsn1GeneralizedTime>("expansionTime");
    m_mlReceiptPolicy = fields.OptionalAny("mlReceiptPolicy");
    fields.End();
}
