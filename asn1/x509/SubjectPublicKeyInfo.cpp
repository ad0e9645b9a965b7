#include "asn1/x509/SubjectPublicKeyInfo.h"

#include "asn1/FieldReader.h"

void CAsn1SubjectPublicKeyInfo::Decode() {
    CFieldReader fields(*this);
    m_algorithm = fields.Required<CAsn1AlgorithmIdentifier>("algorithm");
    m_subjectPublicKey = fields.Required<CAsn1BitString>("subjectPublicKey");
    fields.End();
}
