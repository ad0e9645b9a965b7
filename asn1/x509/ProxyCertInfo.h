#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Typed.h"

// ProxyPolicy ::= SEQUENCE {
//     policyLanguage  OBJECT IDENTIFIER,
//     policy          OCTET STRING OPTIONAL }     RFC 3820, 3.8
class CAsn1ProxyPolicy : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ProxyPolicy");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, PolicyLanguage, "policyLanguage");
    CA_ASN1_OPTIONAL(CAsn1OctetString, Policy, "policy");
    CA_ASN1_END;
};

// ProxyCertInfo ::= SEQUENCE {
//     pCPathLenConstraint  INTEGER OPTIONAL,
//     proxyPolicy          ProxyPolicy }     RFC 3820, 3.8
class CAsn1ProxyCertInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ProxyCertInfo");
    CA_ASN1_OPTIONAL(CAsn1Integer, PCPathLenConstraint, "pCPathLenConstraint");
    CA_ASN1_REQUIRED(CAsn1ProxyPolicy, ProxyPolicy, "proxyPolicy");
    CA_ASN1_END;
};
