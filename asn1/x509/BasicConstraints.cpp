#include "asn1/x509/BasicConstraints.h"

#include "asn1/FieldReader.h"

void CAsn1BasicConstraints::Decode() {
    CFieldReader fields(*this);
    m_cA = fields.Default("cA", false);
    m_pathLenConstraint = fields.Optional<CAsn1Integer>("pathLenConstraint");
    fields.End();
}
