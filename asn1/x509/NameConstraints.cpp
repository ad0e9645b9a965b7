#include "asn1/x509/NameConstraints.h"

#include "asn1/FieldReader.h"

void CAsn1GeneralSubtree::Decode() {
    CFieldReader fields(*this);
    m_base = fields.Required<CAsn1Any>("base");
    m_minimum = fields.OptionalImplicit<CAsn1Integer>(0, "minimum");
    m_maximum = fields.OptionalImplicit<CAsn1Integer>(1, "maximum");
    fields.End();
}

void CAsn1NameConstraints::Decode() {
    CFieldReader fields(*this);
    m_permittedSubtrees =
        fields.OptionalImplicit<CAsn1SequenceOf<CAsn1GeneralSubtree>>(0, "permittedSubtrees");
    m_excludedSubtrees =
        fields.OptionalImplicit<CAsn1SequenceOf<CAsn1GeneralSubtree>>(1, "excludedSubtrees");
    fields.End();
}
