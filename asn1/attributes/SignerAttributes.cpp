#include "asn1/attributes/SignerAttributes.h"

#include "asn1/FieldReader.h"

void CAsn1SignerAttribute::Decode() {
    CChoiceReader choice(*this);
    m_claimedAttributes = choice.Explicit<CAsn1ClaimedAttributes>(0, "claimedAttributes");
    m_certifiedAttributes = choice.Explicit<CAsn1Any>(1, "certifiedAttributes");
    choice.End();
}

void CAsn1CertifiedAttributeV2::Decode() {
    CChoiceReader choice(*this);
    m_attributeCertificate = choice.Explicit<CAsn1Any>(0, "attributeCertificate");
    m_otherAttributeCertificate = choice.Explicit<CAsn1Any>(1, "otherAttributeCertificate");
    choice.End();
}

void CAsn1SignerAttributeV2::Decode() {
    CFieldReader fields(*this);
    m_claimedAttributes = fields.OptionalExplicit<CAsn1ClaimedAttributes>(0, "claimedAttributes");
    m_certifiedAttributes = fields.OptionalExplicit<CAsn1SequenceOf<CAsn1CertifiedAttributeV2>>(
        1, "certifiedAttributesV2");
    m_signedAssertions = fields.OptionalExplicit<CAsn1SequenceOf<CAsn1Any>>(2, "signedAssertions");
    fields.End();
}
