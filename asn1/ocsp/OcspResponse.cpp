#include "asn1/ocsp/OcspResponse.h"

#include "asn1/FieldReader.h"

void CAsn1ResponseBytes::Decode() {
    CFieldReader fields(*this);
    m_responseType = fields.Required<CAsn1ObjectIdentifier>("responseType");
    m_response = fields.Required<CAsn1OctetString>("response");
    fields.End();
}

void CAsn1OcspResponse::Decode() {
    CFieldReader fields(*this);
    m_responseStatus = fields.Required<CAsn1Any>("responseStatus");
    m_responseBytes = fields.OptionalExplicit<CAsn1ResponseBytes>(0, "responseBytes");
    fields.End();
}

void CAsn1ResponderId::Decode() {
    CChoiceReader fields(*this);
    m_byName = fields.Explicit<CAsn1Name>(1, "byName");
    m_byKey = fields.Explicit<CAsn1OctetString>(2, "byKey");
    fields.End();
}

void CAsn1RevokedInfo::Decode() {
    CFieldReader fields(*this);
    m_revocationTime = fields.Required<CAsn1GeneralizedTime>("revocationTime");
    m_revocationReason = fields.OptionalExplicit<CAsn1Any>(0, "revocationReason");
    fields.End();
}

void CAsn1CertStatus::Decode() {
    CChoiceReader fields(*this);
    m_good = fields.Implicit<CAsn1Null>(0, "good");
    m_revoked = fields.Implicit<CAsn1RevokedInfo>(1, "revoked");
    m_unknown = fields.Implicit<CAsn1Null>(2, "unknown");
    fields.End();
}

void CAsn1SingleResponse::Decode() {
    CFieldReader fields(*this);
    m_certId = fields.Required<CAsn1CertId>("certID");
    m_certStatus = fields.Required<CAsn1CertStatus>("certStatus");
    m_thisUpdate = fields.Required<CAsn1GeneralizedTime>("thisUpdate");
    m_nextUpdate = fields.OptionalExplicit<CAsn1GeneralizedTime>(0, "nextUpdate");
    m_singleExtensions = fields.OptionalExplicit<CAsn1Extensions>(1, "singleExtensions");
    fields.End();
}

void CAsn1ResponseData::Decode() {
    CFieldReader fields(*this);
    m_version = fields.OptionalExplicit<CAsn1Integer>(0, "version");
    m_responderId = fields.Required<CAsn1ResponderId>("responderID");
    m_producedAt = fields.Required<CAsn1GeneralizedTime>("producedAt");
    m_responses = fields.Required<CAsn1SequenceOf<CAsn1SingleResponse>>("responses");
    m_responseExtensions = fields.OptionalExplicit<CAsn1Extensions>(1, "responseExtensions");
    fields.End();
}

void CAsn1BasicOcspResponse::Decode() {
    CFieldReader fields(*this);
    m_tbsResponseData = fields.Required<CAsn1ResponseData>("tbsResponseData");
    m_signatureAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("signatureAlgorithm");
    m_signature = fields.Required<CAsn1BitString>("signature");
    m_certs = fields.OptionalExplicit<CAsn1SequenceOf<CAsn1Any>>(0, "certs");
    fields.End();
}

void CAsn1CrlId::Decode() {
    CFieldReader fields(*this);
    m_crlUrl = fields.OptionalExplicit<CAsn1IA5String>(0, "crlUrl");
    m_crlNum = fields.OptionalExplicit<CAsn1Integer>(1, "crlNum");
    m_crlTime = fields.OptionalExplicit<CAsn1GeneralizedTime>(2, "crlTime");
    fields.End();
}
