#include "asn1/cms/CertificateTrustList.h"

#include "asn1/FieldReader.h"

void CAsn1TrustedSubject::Decode() {
    CFieldReader fields(*this);
    m_subjectIdentifier = fields.Required<CAsn1OctetString>("subjectIdentifier");
    m_subjectAttributes = fields.Optional<CAsn1SetOf<CAsn1Attribute>>("subjectAttributes");
    fields.End();
}

void CAsn1CertificateTrustList::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Optional<CAsn1Integer>("version");
    m_subjectUsage = fields.Required<CAsn1SequenceOf<CAsn1ObjectIdentifier>>("subjectUsage");
    m_listIdentifier = fields.Optional<CAsn1OctetString>("listIdentifier");
    m_sequenceNumber = fields.Optional<CAsn1Integer>("sequenceNumber");
    m_ctlThisUpdate = fields.Required<CAsn1Time>("ctlThisUpdate");
    m_ctlNextUpdate = fields.Optional<CAsn1Time>("ctlNextUpdate");
    m_subjectAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("subjectAlgorithm");
    m_trustedSubjects = fields.Optional<CAsn1SequenceOf<CAsn1TrustedSubject>>("trustedSubjects");
    m_ctlExtensions = fields.OptionalExplicit<CAsn1Extensions>(0, "ctlExtensions");
    fields.End();
}
