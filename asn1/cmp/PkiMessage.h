#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
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
    CA_ASN1_SEQUENCE("PKIHeader");
    CA_ASN1_REQUIRED(CAsn1Integer, Pvno, "pvno");
    CA_ASN1_REQUIRED(CAsn1GeneralName, Sender, "sender");
    CA_ASN1_REQUIRED(CAsn1GeneralName, Recipient, "recipient");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1GeneralizedTime, MessageTime, "messageTime");
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1AlgorithmIdentifier, ProtectionAlg, "protectionAlg");
    CA_ASN1_OPTIONAL_EXPLICIT(2, CAsn1OctetString, SenderKid, "senderKID");
    CA_ASN1_OPTIONAL_EXPLICIT(3, CAsn1OctetString, RecipKid, "recipKID");
    CA_ASN1_OPTIONAL_EXPLICIT(4, CAsn1OctetString, TransactionId, "transactionID");
    CA_ASN1_OPTIONAL_EXPLICIT(5, CAsn1OctetString, SenderNonce, "senderNonce");
    CA_ASN1_OPTIONAL_EXPLICIT(6, CAsn1OctetString, RecipNonce, "recipNonce");
    CA_ASN1_OPTIONAL_EXPLICIT(7, CAsn1SequenceOf<CAsn1Any>, FreeText, "freeText");
    CA_ASN1_OPTIONAL_EXPLICIT(8, CAsn1SequenceOf<CAsn1Any>, GeneralInfo, "generalInfo");
    CA_ASN1_END;
};

// PKIMessage ::= SEQUENCE {
//     header      PKIHeader,
//     body        PKIBody,     -- CHOICE: its tag says what the message is
//     protection  [0] EXPLICIT BIT STRING OPTIONAL,
//     extraCerts  [1] EXPLICIT SEQUENCE OF Certificate OPTIONAL }     RFC 4210, 5.1
class CAsn1PkiMessage : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("PKIMessage");
    CA_ASN1_REQUIRED(CAsn1PkiHeader, Header, "header");
    CA_ASN1_REQUIRED(CAsn1Any, Body, "body");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1BitString, Protection, "protection");
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1SequenceOf<CAsn1Any>, ExtraCerts, "extraCerts");
    CA_ASN1_END;
};
