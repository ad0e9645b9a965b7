#include "asn1/cms/SignerIdentifier.h"

#include "asn1/FieldReader.h"

void CAsn1IssuerAndSerialNumber::Decode() {
    CFieldReader fields(*this);
    m_issuer = fields.Required<CAsn1Name>("issuer");
    m_serialNumber = fields.Required<CAsn1Integer>("serialNumber");
    fields.End();
}

void CAsn1SignerIdentifier::Decode() {
    CChoiceReader choice(*this);
    m_issuerAndSerialNumber =
        choice.Alternative<CAsn1IssuerAndSerialNumber>("issuerAndSerialNumber");
    m_subjectKeyIdentifier = choice.Implicit<CAsn1OctetString>(0, "subjectKeyIdentifier");
    choice.End();
}
