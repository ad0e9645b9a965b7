#include "asn1/attributes/Targets.h"

#include "asn1/FieldReader.h"

void CAsn1TargetCert::Decode() {
    CFieldReader fields(*this);
    m_targetCertificate = fields.Required<CAsn1IssuerSerial>("targetCertificate");
    m_targetName = fields.Optional<CAsn1GeneralName>("targetName");
    m_certDigestInfo = fields.Optional<CAsn1ObjectDigestInfo>("certDigestInfo");
    fields.End();
}

void CAsn1Target::Decode() {
    CChoiceReader choice(*this);
    m_targetName = choice.Explicit<CAsn1GeneralName>(0, "targetName");
    m_targetGroup = choice.Explicit<CAsn1GeneralName>(1, "targetGroup");
    m_targetCert = choice.Implicit<CAsn1TargetCert>(2, "targetCert");
    choice.End();
}
