#include "asn1/x509/ProxyCertInfo.h"

#include "asn1/FieldReader.h"

void CAsn1ProxyPolicy::Decode() {
    CFieldReader fields(*this);
    m_policyLanguage = fields.Required<CAsn1ObjectIdentifier>("policyLanguage");
    m_policy = fields.Optional<CAsn1OctetString>("policy");
    fields.End();
}

void CAsn1ProxyCertInfo::Decode() {
    CFieldReader fields(*this);
    m_pCPathLenConstraint = fields.Optional<CAsn1Integer>("pCPathLenConstraint");
    m_proxyPolicy = fields.Required<CAsn1ProxyPolicy>("proxyPolicy");
    fields.End();
}
