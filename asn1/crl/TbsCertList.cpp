#include "asn1/crl/TbsCertList.h"

#include "asn1/FieldReader.h"

void CAsn1TbsCertList::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Optional<CAsn1Integer>("version");
    m_signature = fields.Required<CAsn1AlgorithmIdentifier>("signature");
    m_issuer = fields.Required<CAsn1Name>("issuer");
    m_thisUpdate = fields.Required<CAsn1Time>("thisUpdate");
    m_nextUpdate = fields.Optional<CAsn1Time>("nextUpdate");
    m_revokedCertificates =
        fields.Optional<CAsn1SequenceOf<CAsn1RevokedCertificate>>("revokedCertificates");
    m_crlExtensions = fields.OptionalExplicit<CAsn1Extensions>(0, "crlExtensions");
    fields.End();
}
