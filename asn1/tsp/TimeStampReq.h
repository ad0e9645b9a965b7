#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/attributes/TstInfo.h"
#include "asn1/x509/Extension.h"

// TimeStampReq ::= SEQUENCE {
//     version         INTEGER,
//     messageImprint  MessageImprint,
//     reqPolicy       TSAPolicyId OPTIONAL,     -- OBJECT IDENTIFIER
//     nonce           INTEGER OPTIONAL,
//     certReq         BOOLEAN DEFAULT FALSE,
//     extensions      [0] IMPLICIT Extensions OPTIONAL }     RFC 3161, 2.4.1
class CAsn1TimeStampReq : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("TimeStampReq");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1MessageImprint, MessageImprint, "messageImprint");
    CA_ASN1_OPTIONAL(CAsn1ObjectIdentifier, ReqPolicy, "reqPolicy");
    CA_ASN1_OPTIONAL(CAsn1Integer, Nonce, "nonce");
    CA_ASN1_DEFAULT(CertReq, "certReq", false);
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1Extensions, Extensions, "extensions");
    CA_ASN1_END;
};
