#include "asn1/x509/ValidityModel.h"

#include "asn1/FieldReader.h"

void CAsn1ValidityModel::Decode() {
    CFieldReader fields(*this);
    m_validityModelId = fields.Required<CAsn1ObjectIdentifier>("validityModelId");
    m_validityModelInfo = fields.OptionalAny("validityModelInfo");
    fields.End();
}
