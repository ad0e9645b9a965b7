#include "asn1/attributes/EssAttributes.h"

#include "asn1/FieldReader.h"

CA_ASN1_DECODE(CAsn1ContentHints)
CA_ASN1_DECODE(CAsn1ContentReference)
CA_ASN1_DECODE(CAsn1ReceiptRequest)

void CAsn1EssSecurityLabel::Decode() {
    CFieldReader fields(*this);
    // A SET (RFC 2634, 3.2): DER sorts its members by their tags (X.690, 10.3), other writers keep
    // the order of the definition.
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
        // Written in the order of the tags, a PrintableString stands after a SET.
        m_privacyMark = fields.Optional<CAsn1DirectoryString>("privacy-mark");
    }
    fields.End();
}

CA_ASN1_DECODE(CAsn1SmimeCapability)
CA_ASN1_DECODE(CAsn1SmimeEncryptionKeyPreference)
CA_ASN1_DECODE(CAsn1CmsAlgorithmProtection)
CA_ASN1_DECODE(CAsn1MlData)
