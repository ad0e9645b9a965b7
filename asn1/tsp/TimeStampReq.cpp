#include "asn1/tsp/TimeStampReq.h"

#include "asn1/FieldReader.h"

void CAsn1TimeStampReq::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_messageImprint = fields.Required<CAsn1MessageImprint>("messageImprint");
    m_reqPolicy = fields.Optional<CAsn1ObjectIdentifier>("reqPolicy");
    m_nonce = fields.Optional<CAsn1Integer>("nonce");
    m_certReq = fields.Default("certReq", false);
    m_extensions = fields.OptionalImplicit<CAsn1Extensions>(0, "extensions");
    fields.End();
}
