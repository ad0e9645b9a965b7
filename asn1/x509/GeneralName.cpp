#include "asn1/x509/GeneralName.h"

#include "asn1/FieldReader.h"

void CAsn1OtherName::Decode() {
    CFieldReader fields(*this);
    m_typeId = fields.Required<CAsn1ObjectIdentifier>("type-id");
    m_value = fields.RequiredExplicit<CAsn1Any>(0, "value");
    fields.End();
}

void CAsn1EdiPartyName::Decode() {
    CFieldReader fields(*this);
    m_nameAssigner = fields.OptionalExplicit<CAsn1DirectoryString>(0, "nameAssigner");
    m_partyName = fields.RequiredExplicit<CAsn1DirectoryString>(1, "partyName");
    fields.End();
}

void CAsn1GeneralName::Decode() {
    CChoiceReader choice(*this);
    m_otherName = choice.Implicit<CAsn1OtherName>(0, "otherName");
    m_rfc822Name = choice.Implicit<CAsn1IA5String>(1, "rfc822Name");
    m_dnsName = choice.Implicit<CAsn1IA5String>(2, "dNSName");
    m_x400Address = choice.Implicit<CAsn1OrAddress>(3, "x400Address");
    m_directoryName = choice.Explicit<CAsn1Name>(4, "directoryName");
    m_ediPartyName = choice.Implicit<CAsn1EdiPartyName>(5, "ediPartyName");
    m_uri = choice.Implicit<CAsn1IA5String>(6, "uniformResourceIdentifier");
    m_ipAddress = choice.Implicit<CAsn1OctetString>(7, "iPAddress");
    m_registeredId = choice.Implicit<CAsn1ObjectIdentifier>(8, "registeredID");
    choice.End();
}
