#include "asn1/algorithms/GostParameters.h"

#include "asn1/FieldReader.h"

void CAsn1GostPublicKeyParameters::Decode() {
    CFieldReader fields(*this);
    m_publicKeyParamSet = fields.Required<CAsn1ObjectIdentifier>("publicKeyParamSet");
    m_digestParamSet = fields.Optional<CAsn1ObjectIdentifier>("digestParamSet");
    m_encryptionParamSet = fields.Optional<CAsn1ObjectIdentifier>("encryptionParamSet");
    fields.End();
}

void CAsn1Gost28147Parameters::Decode() {
    CFieldReader fields(*this);
    m_iv = fields.Required<CAsn1OctetString>("iv");
    m_encryptionParamSet = fields.Required<CAsn1ObjectIdentifier>("encryptionParamSet");
    fields.End();
}

void CAsn1Gost28147KeyWrapParameters::Decode() {
    CFieldReader fields(*this);
    m_encryptionParamSet = fields.Required<CAsn1ObjectIdentifier>("encryptionParamSet");
    m_ukm = fields.Optional<CAsn1OctetString>("ukm");
    fields.End();
}

void CAsn1Gost28147EncryptedKey::Decode() {
    CFieldReader fields(*this);
    m_encryptedKey = fields.Required<CAsn1OctetString>("encryptedKey");
    m_maskKey = fields.OptionalImplicit<CAsn1OctetString>(0, "maskKey");
    m_macKey = fields.Required<CAsn1OctetString>("macKey");
    fields.End();
}

void CAsn1GostTransportParameters::Decode() {
    CFieldReader fields(*this);
    m_encryptionParamSet = fields.Required<CAsn1ObjectIdentifier>("encryptionParamSet");
    m_ephemeralPublicKey =
        fields.OptionalImplicit<CAsn1SubjectPublicKeyInfo>(0, "ephemeralPublicKey");
    m_ukm = fields.Required<CAsn1OctetString>("ukm");
    fields.End();
}

void CAsn1GostKeyTransport::Decode() {
    CFieldReader fields(*this);
    m_sessionEncryptedKey = fields.Required<CAsn1Gost28147EncryptedKey>("sessionEncryptedKey");
    m_transportParameters =
        fields.OptionalImplicit<CAsn1GostTransportParameters>(0, "transportParameters");
    fields.End();
}

void CAsn1Gost341215EncryptionParameters::Decode() {
    CFieldReader fields(*this);
    m_ukm = fields.Required<CAsn1OctetString>("ukm");
    fields.End();
}
