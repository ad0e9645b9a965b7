#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Primitives.h"

/// AuthorityKeyIdentifier ::= SEQUENCE {                       RFC 5280, 4.2.1.1
///     keyIdentifier             [0] OCTET STRING OPTIONAL,
///     authorityCertIssuer       [1] GeneralNames OPTIONAL,
///     authorityCertSerialNumber [2] INTEGER OPTIONAL }
class CAsn1AuthorityKeyIdentifier : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "AuthorityKeyIdentifier";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1OctetString* KeyIdentifier() const { return m_keyIdentifier; }
    const CAsn1SequenceOf<CAsn1Any>* AuthorityCertIssuer() const { return m_authorityCertIssuer; }
    const CAsn1Integer* AuthorityCertSerialNumber() const { return m_authorityCertSerialNumber; }

  private:
    CAsn1OctetString* m_keyIdentifier = nullptr;
    CAsn1SequenceOf<CAsn1Any>* m_authorityCertIssuer = nullptr;
    CAsn1Integer* m_authorityCertSerialNumber = nullptr;
};
