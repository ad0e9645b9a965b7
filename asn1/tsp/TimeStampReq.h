#pragma once

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
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "TimeStampReq";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Version() const { return m_version; }
    const CAsn1MessageImprint* MessageImprint() const { return m_messageImprint; }
    const CAsn1ObjectIdentifier* ReqPolicy() const { return m_reqPolicy; }
    const CAsn1Integer* Nonce() const { return m_nonce; }
    bool CertReq() const { return m_certReq; }
    const CAsn1Extensions* Extensions() const { return m_extensions; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1MessageImprint* m_messageImprint = nullptr;
    CAsn1ObjectIdentifier* m_reqPolicy = nullptr;
    CAsn1Integer* m_nonce = nullptr;
    bool m_certReq = false;
    CAsn1Extensions* m_extensions = nullptr;
};
