#include "asn1/algorithms/EcParameters.h"

#include "asn1/FieldReader.h"

void CAsn1CharacteristicTwo::Decode() {
    CFieldReader fields(*this);
    m_m = fields.Required<CAsn1Integer>("m");
    m_basis = fields.Required<CAsn1ObjectIdentifier>("basis");
    m_parameters = fields.RequiredAny("parameters");
    fields.End();
}

void CAsn1FieldId::Decode() {
    CFieldReader fields(*this);
    m_fieldType = fields.Required<CAsn1ObjectIdentifier>("fieldType");
    m_parameters = fields.RequiredAny("parameters");
    fields.End();
}

void CAsn1Curve::Decode() {
    CFieldReader fields(*this);
    m_a = fields.Required<CAsn1OctetString>("a");
    m_b = fields.Required<CAsn1OctetString>("b");
    m_seed = fields.Optional<CAsn1BitString>("seed");
    fields.End();
}

void CAsn1EcParameters::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_fieldId = fields.Required<CAsn1FieldId>("fieldID");
    m_curve = fields.Required<CAsn1Curve>("curve");
    m_base = fields.Required<CAsn1OctetString>("base");
    m_order = fields.Required<CAsn1Integer>("order");
    m_cofactor = fields.Optional<CAsn1Integer>("cofactor");
    m_hash = fields.Optional<CAsn1AlgorithmIdentifier>("hash");
    fields.End();
}

void CAsn1EcpkParameters::Decode() {
    CChoiceReader choice(*this);
    m_ecParameters = choice.Alternative<CAsn1EcParameters>("ecParameters");
    m_namedCurve = choice.Alternative<CAsn1ObjectIdentifier>("namedCurve");
    m_implicitlyCa = choice.Alternative<CAsn1Null>("implicitlyCA");
    choice.End();
}
