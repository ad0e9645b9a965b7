#include "asn1/ocsp/OcspRequest.h"

#include "asn1/FieldReader.h"

void CAsn1OcspSingleRequest::Decode() {
    CFieldReader fields(*this);
    m_reqCert = fields.Required<CAsn1CertId>("reqCert");
    m_singleRequestExtensions =
        fields.OptionalExplicit<CAsn1Extensions>(0, "singleRequestExtensions");
    fields.End();
}

void CAsn1TbsOcspRequest::Decode() {
    CFieldReader fields(*this);
    m_version = fields.OptionalExplicit<CAsn1Integer>(0, "version");
    m_requestorName = fields.OptionalExplicit<CAsn1GeneralName>(1, "requestorName");
    m_requestList = fields.Required<CAsn1SequenceOf<CAsn1OcspSingleRequest>>("requestList");
    m_requestExtensions = fields.OptionalExplicit<CAsn1Extensions>(2, "requestExtensions");
    fields.End();
}

void CAsn1OcspSignature::Decode() {
    CFieldReader fields(*this);
    m_signatureAlgorithm = fields.Required<CAsn1AlgorithmIdentifier>("signatureAlgorithm");
    m_signature = fields.Required<CAsn1BitString>("signature");
    m_certs = fields.OptionalExplicit<CAsn1SequenceOf<CAsn1Any>>(0, "certs");
    fields.End();
}

void CAsn1OcspRequest::Decode() {
    CFieldReader fields(*this);
    m_tbsRequest = fields.Required<CAsn1TbsOcspRequest>("tbsRequest");
    m_optionalSignature = fields.OptionalExplicit<CAsn1OcspSignature>(0, "optionalSignature");
    fields.End();
}

void CAsn1ServiceLocator::Decode() {
    CFieldReader fields(*this);
    m_issuer = fields.Required<CAsn1Name>("issuer");
    m_locator = fields.Required<CAsn1SequenceOf<CAsn1AccessDescription>>("locator");
    fields.End();
}
