#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Time.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/GeneralName.h"

// PKIHeader ::= SEQUENCE {
//     pvno           INTEGER,
//     sender         GeneralName,
//     recipient      GeneralName,
//     messageTime    [0] EXPLICIT GeneralizedTime OPTIONAL,
//     protectionAlg  [1] EXPLICIT AlgorithmIdentifier OPTIONAL,
//     senderKID      [2] EXPLICIT KeyIdentifier OPTIONAL,     -- OCTET STRING
//     recipKID       [3] EXPLICIT KeyIdentifier OPTIONAL,
//     transactionID  [4] EXPLICIT OCTET STRING OPTIONAL,
//     senderNonce    [5] EXPLICIT OCTET STRING OPTIONAL,
//     recipNonce     [6] EXPLICIT OCTET STRING OPTIONAL,
//     freeText       [7] EXPLICIT PKIFreeText OPTIONAL,     -- SEQUENCE OF UTF8String
//     generalInfo    [8] EXPLICIT SEQUENCE OF InfoTypeAndValue OPTIONAL }     RFC 4210, 5.1.1
class CAsn1PkiHeader : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "PKIHeader";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Pvno() const { return m_pvno; }
    const CAsn1GeneralName* Sender() const { return m_sender; }
    const CAsn1GeneralName* Recipient() const { return m_recipient; }
    const CAsn1GeneralizedTime* MessageTime() const { return m_messageTime; }
    const CAsn1AlgorithmIdentifier* ProtectionAlg() const { return m_protectionAlg; }
    const CAsn1OctetString* SenderKid() const { return m_senderKID; }
    const CAsn1OctetString* RecipKid() const { return m_recipKID; }
    const CAsn1OctetString* TransactionId() const { return m_transactionID; }
    const CAsn1OctetString* SenderNonce() const { return m_senderNonce; }
    const CAsn1OctetString* RecipNonce() const { return m_recipNonce; }
    const CAsn1SequenceOf<CAsn1Any>* FreeText() const { return m_freeText; }
    const CAsn1SequenceOf<CAsn1Any>* GeneralInfo() const { return m_generalInfo; }

  private:
    CAsn1Integer* m_pvno = nullptr;
    CAsn1GeneralName* m_sender = nullptr;
    CAsn1GeneralName* m_recipient = nullptr;
    CAsn1GeneralizedTime* m_messageTime = nullptr;
    CAsn1AlgorithmIdentifier* m_protectionAlg = nullptr;
    CAsn1OctetString* m_senderKID = nullptr;
    CAsn1OctetString* m_recipKID = nullptr;
    CAsn1OctetString* m_transactionID = nullptr;
    CAsn1OctetString* m_senderNonce = nullptr;
    CAsn1OctetString* m_recipNonce = nullptr;
    CAsn1SequenceOf<CAsn1Any>* m_freeText = nullptr;
    CAsn1SequenceOf<CAsn1Any>* m_generalInfo = nullptr;
};

// PKIMessage ::= SEQUENCE {
//     header      PKIHeader,
//     body        PKIBody,     -- CHOICE: its tag says what the message is
//     protection  [0] EXPLICIT BIT STRING OPTIONAL,
//     extraCerts  [1] EXPLICIT SEQUENCE OF Certificate OPTIONAL }     RFC 4210, 5.1
class CAsn1PkiMessage : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "PKIMessage";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1PkiHeader* Header() const { return m_header; }
    const CAsn1Any* Body() const { return m_body; }
    const CAsn1BitString* Protection() const { return m_protection; }
    const CAsn1SequenceOf<CAsn1Any>* ExtraCerts() const { return m_extraCerts; }

  private:
    CAsn1PkiHeader* m_header = nullptr;
    CAsn1Any* m_body = nullptr;
    CAsn1BitString* m_protection = nullptr;
    CAsn1SequenceOf<CAsn1Any>* m_extraCerts = nullptr;
};
