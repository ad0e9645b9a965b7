#pragma once

#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Typed.h"

// ProxyPolicy ::= SEQUENCE {
//     policyLanguage  OBJECT IDENTIFIER,
//     policy          OCTET STRING OPTIONAL }     RFC 3820, 3.8
class CAsn1ProxyPolicy : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ProxyPolicy";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ObjectIdentifier* PolicyLanguage() const { return m_policyLanguage; }
    const CAsn1OctetString* Policy() const { return m_policy; }

  private:
    CAsn1ObjectIdentifier* m_policyLanguage = nullptr;
    CAsn1OctetString* m_policy = nullptr;
};

// ProxyCertInfo ::= SEQUENCE {
//     pCPathLenConstraint  INTEGER OPTIONAL,
//     proxyPolicy          ProxyPolicy }     RFC 3820, 3.8
class CAsn1ProxyCertInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ProxyCertInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* PCPathLenConstraint() const { return m_pCPathLenConstraint; }
    const CAsn1ProxyPolicy* ProxyPolicy() const { return m_proxyPolicy; }

  private:
    CAsn1Integer* m_pCPathLenConstraint = nullptr;
    CAsn1ProxyPolicy* m_proxyPolicy = nullptr;
};
