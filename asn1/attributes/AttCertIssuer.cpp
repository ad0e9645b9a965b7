#include "asn1/attributes/AttCertIssuer.h"

#include "asn1/FieldReader.h"

void CAsn1V2Form::Decode() {
    CFieldReader fields(*this);
    m_issuerName = fields.Optional<CAsn1GeneralNames>("issuerName");
    m_baseCertificateId = fields.OptionalImplicit<CAsn1IssuerSerial>(0, "baseCertificateID");
    m_objectDigestInfo = fields.OptionalImplicit<CAsn1ObjectDigestInfo>(1, "objectDigestInfo");
    fields.End();
}

void CAsn1AttCertIssuer::Decode() {
    CChoiceReader choice(*this);
    m_v1Form = choice.Alternative<CAsn1GeneralNames>("v1Form");
    m_v2Form = choice.Implicit<CAsn1V2Form>(0, "v2Form");
    choice.End();
}
