#include "asn1/crl/RevokedCertificate.h"

#include "asn1/FieldReader.h"

void CAsn1RevokedCertificate::Decode() {
    CFieldReader fields(*this);
    m_userCertificate = fields.Required<CAsn1Integer>("userCertificate");
    m_revocationDate = fields.Required<CAsn1Time>("revocationDate");
    m_crlEntryExtensions = fields.Optional<CAsn1Extensions>("crlEntryExtensions");
    fields.End();
}
