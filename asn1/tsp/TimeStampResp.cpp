#include "asn1/tsp/TimeStampResp.h"

#include "asn1/FieldReader.h"

void CAsn1PkiStatusInfo::Decode() {
    CFieldReader fields(*this);
    m_status = fields.Required<CAsn1Integer>("status");
    m_statusString = fields.Optional<CAsn1SequenceOf<CAsn1Any>>("statusString");
    m_failInfo = fields.Optional<CAsn1BitString>("failInfo");
    fields.End();
}

void CAsn1TimeStampResp::Decode() {
    CFieldReader fields(*this);
    m_status = fields.Required<CAsn1PkiStatusInfo>("status");
    m_timeStampToken = fields.Optional<CAsn1ContentInfo>("timeStampToken");
    fields.End();
}
