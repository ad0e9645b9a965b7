#include "asn1/attributes/AaControls.h"

#include "asn1/FieldReader.h"

void CAsn1AaControls::Decode() {
    CFieldReader fields(*this);
    m_pathLenConstraint = fields.Optional<CAsn1Integer>("pathLenConstraint");
    m_permittedAttrs =
        fields.OptionalImplicit<CAsn1SequenceOf<CAsn1ObjectIdentifier>>(0, "permittedAttrs");
    m_excludedAttrs =
        fields.OptionalImplicit<CAsn1SequenceOf<CAsn1ObjectIdentifier>>(1, "excludedAttrs");
    m_permitUnSpecified = fields.Default("permitUnSpecified", true);
    fields.End();
}
