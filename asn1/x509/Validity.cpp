#include "asn1/x509/Validity.h"

#include "asn1/FieldReader.h"

void CAsn1Validity::Decode() {
    CFieldReader fields(*this);
    m_notBefore = fields.Required<CAsn1Time>("notBefore");
    m_notAfter = fields.Required<CAsn1Time>("notAfter");
    fields.End();
}
