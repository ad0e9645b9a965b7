#include "asn1/x509/CertificatePair.h"

#include "asn1/FieldReader.h"

void CAsn1CertificatePair::Decode() {
    CFieldReader fields(*this);
    m_issuedToThisCA = fields.OptionalExplicit<CAsn1Any>(0, "issuedToThisCA");
    m_issuedByThisCA = fields.OptionalExplicit<CAsn1Any>(1, "issuedByThisCA");
    fields.End();
}
