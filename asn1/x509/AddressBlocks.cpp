#include "asn1/x509/AddressBlocks.h"

#include "asn1/FieldReader.h"

void CAsn1IpAddressFamily::Decode() {
    CFieldReader fields(*this);
    m_addressFamily = fields.Required<CAsn1OctetString>("addressFamily");
    m_ipAddressChoice = fields.Required<CAsn1Any>("ipAddressChoice");
    fields.End();
}

void CAsn1IpAddressRange::Decode() {
    CFieldReader fields(*this);
    m_min = fields.Required<CAsn1BitString>("min");
    m_max = fields.Required<CAsn1BitString>("max");
    fields.End();
}

void CAsn1AsIdentifiers::Decode() {
    CFieldReader fields(*this);
    m_asnum = fields.OptionalExplicit<CAsn1Any>(0, "asnum");
    m_rdi = fields.OptionalExplicit<CAsn1Any>(1, "rdi");
    fields.End();
}

void CAsn1AsRange::Decode() {
    CFieldReader fields(*this);
    m_min = fields.Required<CAsn1Integer>("min");
    m_max = fields.Required<CAsn1Integer>("max");
    fields.End();
}
