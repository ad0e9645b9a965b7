#include "asn1/x509/AuthorityKeyIdentifier.h"

#include "asn1/FieldReader.h"

void CAsn1AuthorityKeyIdentifier::Decode() {
    CFieldReader fields(*this);
    m_keyIdentifier = fields.OptionalImplicit<CAsn1OctetString>(0, "keyIdentifier");
    m_authorityCertIssuer =
        fields.OptionalImplicit<CAsn1SequenceOf<CAsn1Any>>(1, "authorityCertIssuer");
    m_authorityCertSerialNumber =
        fields.OptionalImplicit<CAsn1Integer>(2, "authorityCertSerialNumber");
    fields.End();
}
