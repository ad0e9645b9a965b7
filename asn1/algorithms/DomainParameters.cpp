#include "asn1/algorithms/DomainParameters.h"

#include "asn1/FieldReader.h"

void CAsn1DssParms::Decode() {
    CFieldReader fields(*this);
    m_p = fields.Required<CAsn1Integer>("p");
    m_q = fields.Required<CAsn1Integer>("q");
    m_g = fields.Required<CAsn1Integer>("g");
    fields.End();
}

void CAsn1DssSigValue::Decode() {
    CFieldReader fields(*this);
    m_r = fields.Required<CAsn1Integer>("r");
    m_s = fields.Required<CAsn1Integer>("s");
    fields.End();
}

void CAsn1ValidationParms::Decode() {
    CFieldReader fields(*this);
    m_seed = fields.Required<CAsn1BitString>("seed");
    m_pgenCounter = fields.Required<CAsn1Integer>("pgenCounter");
    fields.End();
}

void CAsn1DomainParameters::Decode() {
    CFieldReader fields(*this);
    m_p = fields.Required<CAsn1Integer>("p");
    m_g = fields.Required<CAsn1Integer>("g");
    m_q = fields.Required<CAsn1Integer>("q");
    m_j = fields.Optional<CAsn1Integer>("j");
    m_validationParms = fields.Optional<CAsn1ValidationParms>("validationParms");
    fields.End();
}

void CAsn1DhParameter::Decode() {
    CFieldReader fields(*this);
    m_prime = fields.Required<CAsn1Integer>("prime");
    m_base = fields.Required<CAsn1Integer>("base");
    m_privateValueLength = fields.Optional<CAsn1Integer>("privateValueLength");
    fields.End();
}
