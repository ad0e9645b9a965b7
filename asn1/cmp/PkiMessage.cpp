#include "asn1/cmp/PkiMessage.h"

#include "asn1/FieldReader.h"

void CAsn1PkiHeader::Decode() {
    CFieldReader fields(*this);
    m_pvno = fields.Required<CAsn1Integer>("pvno");
    m_sender = fields.Required<CAsn1GeneralName>("sender");
    m_recipient = fields.Required<CAsn1GeneralName>("recipient");
    m_messageTime = fields.OptionalExplicit<CAsn1GeneralizedTime>(0, "messageTime");
    m_protectionAlg = fields.OptionalExplicit<CAsn1AlgorithmIdentifier>(1, "protectionAlg");
    m_senderKID = fields.OptionalExplicit<CAsn1OctetString>(2, "senderKID");
    m_recipKID = fields.OptionalExplicit<CAsn1OctetString>(3, "recipKID");
    m_transactionID = fields.OptionalExplicit<CAsn1OctetString>(4, "transactionID");
    m_senderNonce = fields.OptionalExplicit<CAsn1OctetString>(5, "senderNonce");
    m_recipNonce = fields.OptionalExplicit<CAsn1OctetString>(6, "recipNonce");
    m_freeText = fields.OptionalExplicit<CAsn1SequenceOf<CAsn1Any>>(7, "freeText");
    m_generalInfo = fields.OptionalExplicit<CAsn1SequenceOf<CAsn1Any>>(8, "generalInfo");
    fields.End();
}

void CAsn1PkiMessage::Decode() {
    CFieldReader fields(*this);
    m_header = fields.Required<CAsn1PkiHeader>("header");
    m_body = fields.Required<CAsn1Any>("body");
    m_protection = fields.OptionalExplicit<CAsn1BitString>(0, "protection");
    m_extraCerts = fields.OptionalExplicit<CAsn1SequenceOf<CAsn1Any>>(1, "extraCerts");
    fields.End();
}
