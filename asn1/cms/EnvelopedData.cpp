#include "asn1/cms/EnvelopedData.h"

#include "asn1/FieldReader.h"

void CAsn1OriginatorInfo::Decode() {
    CFieldReader fields(*this);
    m_certs = fields.OptionalImplicit<CAsn1SetOf<CAsn1Any>>(0, "certs");
    m_crls = fields.OptionalImplicit<CAsn1SetOf<CAsn1Any>>(1, "crls");
    fields.End();
}

void CAsn1EncryptedContentInfo::Decode() {
    CFieldReader fields(*this);
    m_contentType = fields.Required<CAsn1ObjectIdentifier>("contentType");
    m_contentEncryptionAlgorithm =
        fields.Required<CAsn1AlgorithmIdentifier>("contentEncryptionAlgorithm");
    m_encryptedContent = fields.OptionalImplicit<CAsn1OctetString>(0, "encryptedContent");
    fields.End();
}

void CAsn1EnvelopedData::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_originatorInfo = fields.OptionalImplicit<CAsn1OriginatorInfo>(0, "originatorInfo");
    m_recipientInfos = fields.Required<CAsn1SetOf<CAsn1RecipientInfo>>("recipientInfos");
    m_encryptedContentInfo = fields.Required<CAsn1EncryptedContentInfo>("encryptedContentInfo");
    m_unprotectedAttrs = fields.OptionalImplicit<CAsn1SetOf<CAsn1Attribute>>(1, "unprotectedAttrs");
    fields.End();
}

void CAsn1AuthEnvelopedData::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_originatorInfo = fields.OptionalImplicit<CAsn1OriginatorInfo>(0, "originatorInfo");
    m_recipientInfos = fields.Required<CAsn1SetOf<CAsn1RecipientInfo>>("recipientInfos");
    m_authEncryptedContentInfo =
        fields.Required<CAsn1EncryptedContentInfo>("authEncryptedContentInfo");
    m_authAttrs = fields.OptionalImplicit<CAsn1SetOf<CAsn1Attribute>>(1, "authAttrs");
    m_mac = fields.Required<CAsn1OctetString>("mac");
    m_unauthAttrs = fields.OptionalImplicit<CAsn1SetOf<CAsn1Attribute>>(2, "unauthAttrs");
    fields.End();
}

void CAsn1AuthenticatedData::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_originatorInfo = fields.OptionalImplicit<CAsn1OriginatorInfo>(0, "originatorInfo");
    m_recipientInfos = fields.Required<CAsn1SetOf<CAsn1RecipientInfo>>("recipientInfos");
    m_macAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("macAlgorithm");
    m_digestAlgorithm = fields.OptionalImplicit<CAsn1AlgorithmIdentifier>(1, "digestAlgorithm");
    m_encapContentInfo = fields.Required<CAsn1EncapsulatedContentInfo>("encapContentInfo");
    m_authAttrs = fields.OptionalImplicit<CAsn1SetOf<CAsn1Attribute>>(2, "authAttrs");
    m_mac = fields.Required<CAsn1OctetString>("mac");
    m_unauthAttrs = fields.OptionalImplicit<CAsn1SetOf<CAsn1Attribute>>(3, "unauthAttrs");
    fields.End();
}

void CAsn1SignedAndEnvelopedData::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_recipientInfos = fields.Required<CAsn1SetOf<CAsn1RecipientInfo>>("recipientInfos");
    m_digestAlgorithms = fields.Required<CAsn1SetOf<CAsn1AlgorithmIdentifier>>("digestAlgorithms");
    m_encryptedContentInfo = fields.Required<CAsn1EncryptedContentInfo>("encryptedContentInfo");
    m_certificates = fields.OptionalImplicit<CAsn1SetOf<CAsn1Any>>(0, "certificates");
    m_crls = fields.OptionalImplicit<CAsn1SetOf<CAsn1Any>>(1, "crls");
    m_signerInfos = fields.Required<CAsn1SetOf<CAsn1SignerInfo>>("signerInfos");
    fields.End();
}
