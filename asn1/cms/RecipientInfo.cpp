#include "asn1/cms/RecipientInfo.h"

#include "asn1/FieldReader.h"

void CAsn1OtherKeyAttribute::Decode() {
    CFieldReader fields(*this);
    m_keyAttrId = fields.Required<CAsn1ObjectIdentifier>("keyAttrId");
    m_keyAttr = fields.OptionalAny("keyAttr");
    fields.End();
}

void CAsn1KeyTransRecipientInfo::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_rid = fields.Required<CAsn1SignerIdentifier>("rid");
    m_keyEncryptionAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("keyEncryptionAlgorithm");
    m_encryptedKey = fields.Required<CAsn1OctetString>("encryptedKey");
    fields.End();
}

void CAsn1OriginatorPublicKey::Decode() {
    CFieldReader fields(*this);
    m_algorithm = fields.Required<CAsn1AlgorithmIdentifier>("algorithm");
    m_publicKey = fields.Required<CAsn1BitString>("publicKey");
    fields.End();
}

void CAsn1OriginatorIdentifierOrKey::Decode() {
    CChoiceReader choice(*this);
    m_issuerAndSerialNumber =
        choice.Alternative<CAsn1IssuerAndSerialNumber>("issuerAndSerialNumber");
    m_subjectKeyIdentifier = choice.Implicit<CAsn1OctetString>(0, "subjectKeyIdentifier");
    m_originatorKey = choice.Implicit<CAsn1OriginatorPublicKey>(1, "originatorKey");
    choice.End();
}

void CAsn1RecipientKeyIdentifier::Decode() {
    CFieldReader fields(*this);
    m_subjectKeyIdentifier = fields.Required<CAsn1OctetString>("subjectKeyIdentifier");
    m_date = fields.Optional<CAsn1GeneralizedTime>("date");
    m_other = fields.Optional<CAsn1OtherKeyAttribute>("other");
    fields.End();
}

void CAsn1KeyAgreeRecipientIdentifier::Decode() {
    CChoiceReader choice(*this);
    m_issuerAndSerialNumber =
        choice.Alternative<CAsn1IssuerAndSerialNumber>("issuerAndSerialNumber");
    m_rKeyId = choice.Implicit<CAsn1RecipientKeyIdentifier>(0, "rKeyId");
    choice.End();
}

void CAsn1RecipientEncryptedKey::Decode() {
    CFieldReader fields(*this);
    m_rid = fields.Required<CAsn1KeyAgreeRecipientIdentifier>("rid");
    m_encryptedKey = fields.Required<CAsn1OctetString>("encryptedKey");
    fields.End();
}

void CAsn1KeyAgreeRecipientInfo::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_originator = fields.RequiredExplicit<CAsn1OriginatorIdentifierOrKey>(0, "originator");
    m_ukm = fields.OptionalExplicit<CAsn1OctetString>(1, "ukm");
    m_keyEncryptionAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("keyEncryptionAlgorithm");
    m_recipientEncryptedKeys =
        fields.Required<CAsn1SequenceOf<CAsn1RecipientEncryptedKey>>("recipientEncryptedKeys");
    fields.End();
}

void CAsn1KekIdentifier::Decode() {
    CFieldReader fields(*this);
    m_keyIdentifier = fields.Required<CAsn1OctetString>("keyIdentifier");
    m_date = fields.Optional<CAsn1GeneralizedTime>("date");
    m_other = fields.Optional<CAsn1OtherKeyAttribute>("other");
    fields.End();
}

void CAsn1KekRecipientInfo::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_kekId = fields.Required<CAsn1KekIdentifier>("kekid");
    m_keyEncryptionAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("keyEncryptionAlgorithm");
    m_encryptedKey = fields.Required<CAsn1OctetString>("encryptedKey");
    fields.End();
}

void CAsn1PasswordRecipientInfo::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_keyDerivationAlgorithm =
        fields.OptionalImplicit<CAsn1AlgorithmIdentifier>(0, "keyDerivationAlgorithm");
    m_keyEncryptionAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("keyEncryptionAlgorithm");
    m_encryptedKey = fields.Required<CAsn1OctetString>("encryptedKey");
    fields.End();
}

void CAsn1OtherRecipientInfo::Decode() {
    CFieldReader fields(*this);
    m_oriType = fields.Required<CAsn1ObjectIdentifier>("oriType");
    m_oriValue = fields.RequiredAny("oriValue");
    fields.End();
}

void CAsn1KemRecipientInfo::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_rid = fields.Required<CAsn1SignerIdentifier>("rid");
    m_kem = fields.Required<CAsn1AlgorithmIdentifier>("kem");
    m_kemct = fields.Required<CAsn1OctetString>("kemct");
    m_kdf = fields.Required<CAsn1AlgorithmIdentifier>("kdf");
    m_kekLength = fields.Required<CAsn1Integer>("kekLength");
    m_ukm = fields.OptionalExplicit<CAsn1OctetString>(0, "ukm");
    m_wrap = fields.Required<CAsn1AlgorithmIdentifier>("wrap");
    m_encryptedKey = fields.Required<CAsn1OctetString>("encryptedKey");
    fields.End();
}

void CAsn1KeyTransPskRecipientInfo::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_pskId = fields.Required<CAsn1OctetString>("pskid");
    m_kdfAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("kdfAlgorithm");
    m_keyEncryptionAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("keyEncryptionAlgorithm");
    m_ktris = fields.Required<CAsn1SequenceOf<CAsn1KeyTransRecipientInfo>>("ktris");
    m_encryptedKey = fields.Required<CAsn1OctetString>("encryptedKey");
    fields.End();
}

void CAsn1KeyAgreePskRecipientInfo::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_pskId = fields.Required<CAsn1OctetString>("pskid");
    m_originator = fields.RequiredExplicit<CAsn1OriginatorIdentifierOrKey>(0, "originator");
    m_ukm = fields.OptionalExplicit<CAsn1OctetString>(1, "ukm");
    m_kdfAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("kdfAlgorithm");
    m_keyEncryptionAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("keyEncryptionAlgorithm");
    m_recipientEncryptedKeys =
        fields.Required<CAsn1SequenceOf<CAsn1RecipientEncryptedKey>>("recipientEncryptedKeys");
    fields.End();
}

void CAsn1RecipientInfo::Decode() {
    CChoiceReader choice(*this);
    m_ktri = choice.Alternative<CAsn1KeyTransRecipientInfo>("ktri");
    m_kari = choice.Implicit<CAsn1KeyAgreeRecipientInfo>(1, "kari");
    m_kekri = choice.Implicit<CAsn1KekRecipientInfo>(2, "kekri");
    m_pwri = choice.Implicit<CAsn1PasswordRecipientInfo>(3, "pwri");
    m_ori = choice.Implicit<CAsn1OtherRecipientInfo>(4, "ori");
    choice.End();
}
