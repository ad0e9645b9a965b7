#include "asn1/attributes/TstInfo.h"

#include "asn1/FieldReader.h"

void CAsn1MessageImprint::Decode() {
    CFieldReader fields(*this);
    m_hashAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("hashAlgorithm");
    m_hashedMessage = fields.Required<CAsn1OctetString>("hashedMessage");
    fields.End();
}

void CAsn1Accuracy::Decode() {
    CFieldReader fields(*this);
    m_seconds = fields.Optional<CAsn1Integer>("seconds");
    m_millis = fields.OptionalImplicit<CAsn1Integer>(0, "millis");
    m_micros = fields.OptionalImplicit<CAsn1Integer>(1, "micros");
    fields.End();
}

void CAsn1TstInfo::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_policy = fields.Required<CAsn1ObjectIdentifier>("policy");
    m_messageImprint = fields.Required<CAsn1MessageImprint>("messageImprint");
    m_serialNumber = fields.Required<CAsn1Integer>("serialNumber");
    m_genTime = fields.Required<CAsn1GeneralizedTime>("genTime");
    m_accuracy = fields.Optional<CAsn1Accuracy>("accuracy");
    m_ordering = fields.Default("ordering", false);
    m_nonce = fields.Optional<CAsn1Integer>("nonce");
    m_tsa = fields.OptionalExplicit<CAsn1Any>(0, "tsa");
    m_extensions = fields.OptionalImplicit<CAsn1Extensions>(1, "extensions");
    fields.End();
}
