#include "asn1/x509/PrivateKeyUsagePeriod.h"

#include "asn1/FieldReader.h"

void CAsn1PrivateKeyUsagePeriod::Decode() {
    CFieldReader fields(*this);
    m_notBefore = fields.OptionalImplicit<CAsn1GeneralizedTime>(0, "notBefore");
    m_notAfter = fields.OptionalImplicit<CAsn1GeneralizedTime>(1, "notAfter");
    fields.End();
}
