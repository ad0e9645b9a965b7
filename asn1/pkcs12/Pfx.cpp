#include "asn1/pkcs12/Pfx.h"

#include "asn1/FieldReader.h"

void CAsn1MacData::Decode() {
    CFieldReader fields(*this);
    m_mac = fields.Required<CAsn1DigestInfo>("mac");
    m_macSalt = fields.Required<CAsn1OctetString>("macSalt");
    m_iterations = fields.Optional<CAsn1Integer>("iterations");
    fields.End();
}

void CAsn1Pfx::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_authSafe = fields.Required<CAsn1ContentInfo>("authSafe");
    m_macData = fields.Optional<CAsn1MacData>("macData");
    fields.End();
}

void CAsn1SafeBag::Decode() {
    CFieldReader fields(*this);
    m_bagId = fields.Required<CAsn1ObjectIdentifier>("bagId");
    m_bagValue = fields.RequiredExplicit<CAsn1Any>(0, "bagValue");
    m_bagAttributes = fields.Optional<CAsn1SetOf<CAsn1Attribute>>("bagAttributes");
    fields.End();
}

void CAsn1TypedBag::Decode() {
    CFieldReader fields(*this);
    m_certId = fields.Required<CAsn1ObjectIdentifier>("certId");
    m_certValue = fields.RequiredExplicit<CAsn1Any>(0, "certValue");
    fields.End();
}
