#include "asn1/algorithms/CipherParameters.h"

#include "asn1/FieldReader.h"

void CAsn1GcmParameters::Decode() {
    CFieldReader fields(*this);
    m_nonce = fields.Required<CAsn1OctetString>("aes-nonce");
    m_icvLen = fields.Optional<CAsn1Integer>("aes-ICVlen");
    fields.End();
}

void CAsn1Rc2CbcParameter::Decode() {
    CFieldReader fields(*this);
    m_rc2ParameterVersion = fields.Optional<CAsn1Integer>("rc2ParameterVersion");
    m_iv = fields.Required<CAsn1OctetString>("iv");
    fields.End();
}
