#include "asn1/x509/PolicyMapping.h"

#include "asn1/FieldReader.h"

void CAsn1PolicyMapping::Decode() {
    CFieldReader fields(*this);
    m_issuerDomainPolicy = fields.Required<CAsn1ObjectIdentifier>("issuerDomainPolicy");
    m_subjectDomainPolicy = fields.Required<CAsn1ObjectIdentifier>("subjectDomainPolicy");
    fields.End();
}

void CAsn1PolicyConstraints::Decode() {
    CFieldReader fields(*this);
    m_requireExplicitPolicy = fields.OptionalImplicit<CAsn1Integer>(0, "requireExplicitPolicy");
    m_inhibitPolicyMapping = fields.OptionalImplicit<CAsn1Integer>(1, "inhibitPolicyMapping");
    fields.End();
}
