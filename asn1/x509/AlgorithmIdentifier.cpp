#include "asn1/x509/AlgorithmIdentifier.h"

#include "asn1/FieldReader.h"

void CAsn1AlgorithmIdentifier::Decode() {
    CFieldReader fields(*this);
    m_algorithm = fields.Required<CAsn1ObjectIdentifier>("algorithm");
    m_parameters = fields.OptionalAny("parameters");
    fields.End();
}
