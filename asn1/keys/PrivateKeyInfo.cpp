#include "asn1/keys/PrivateKeyInfo.h"

#include "asn1/FieldReader.h"

void CAsn1PrivateKeyInfo::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_privateKeyAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("privateKeyAlgorithm");
    m_privateKey = fields.Required<CAsn1OctetString>("privateKey");
    m_attributes = fields.OptionalImplicit<CAsn1SetOf<CAsn1Attribute>>(0, "attributes");
    m_publicKey = fields.OptionalImplicit<CAsn1BitString>(1, "publicKey");
    fields.End();
}

void CAsn1EncryptedPrivateKeyInfo::Decode() {
    CFieldReader fields(*this);
    m_encryptionAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("encryptionAlgorithm");
    m_encryptedData = fields.Required<CAsn1OctetString>("encryptedData");
    fields.End();
}
