#include "asn1/attributes/RevocationReferences.h"

#include "asn1/FieldReader.h"

void CAsn1CrlIdentifier::Decode() {
    CFieldReader fields(*this);
    m_crlIssuer = fields.Required<CAsn1Name>("crlIssuer");
    m_crlIssuedTime = fields.Required<CAsn1Time>("crlIssuedTime");
    m_crlNumber = fields.Optional<CAsn1Integer>("crlNumber");
    fields.End();
}

void CAsn1CrlValidatedId::Decode() {
    CFieldReader fields(*this);
    m_crlHash = fields.Required<CAsn1OtherHash>("crlHash");
    m_crlIdentifier = fields.Optional<CAsn1CrlIdentifier>("crlIdentifier");
    fields.End();
}

void CAsn1CrlListId::Decode() {
    CFieldReader fields(*this);
    m_crls = fields.Required<CAsn1SequenceOf<CAsn1CrlValidatedId>>("crls");
    fields.End();
}

void CAsn1OcspIdentifier::Decode() {
    CFieldReader fields(*this);
    m_ocspResponderId = fields.Required<CAsn1ResponderId>("ocspResponderID");
    m_producedAt = fields.Required<CAsn1GeneralizedTime>("producedAt");
    fields.End();
}

void CAsn1OcspResponsesId::Decode() {
    CFieldReader fields(*this);
    m_ocspIdentifier = fields.Required<CAsn1OcspIdentifier>("ocspIdentifier");
    m_ocspRepHash = fields.Optional<CAsn1OtherHash>("ocspRepHash");
    fields.End();
}

void CAsn1OcspListId::Decode() {
    CFieldReader fields(*this);
    m_ocspResponses = fields.Required<CAsn1SequenceOf<CAsn1OcspResponsesId>>("ocspResponses");
    fields.End();
}

void CAsn1CrlOcspRef::Decode() {
    CFieldReader fields(*this);
    m_crlids = fields.OptionalExplicit<CAsn1CrlListId>(0, "crlids");
    m_ocspids = fields.OptionalExplicit<CAsn1OcspListId>(1, "ocspids");
    m_otherRev = fields.OptionalExplicit<CAsn1Any>(2, "otherRev");
    fields.End();
}

void CAsn1RevocationValues::Decode() {
    CFieldReader fields(*this);
    m_crlVals = fields.OptionalExplicit<CAsn1SequenceOf<CAsn1Any>>(0, "crlVals");
    m_ocspVals = fields.OptionalExplicit<CAsn1SequenceOf<CAsn1Any>>(1, "ocspVals");
    m_otherRevVals = fields.OptionalExplicit<CAsn1Any>(2, "otherRevVals");
    fields.End();
}
