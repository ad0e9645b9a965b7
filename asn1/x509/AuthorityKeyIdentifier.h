#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"

/// AuthorityKeyIdentifier ::= SEQUENCE {                       RFC 5280, 4.2.1.1
///     keyIdentifier             [0] OCTET STRING OPTIONAL,
///     authorityCertIssuer       [1] GeneralNames OPTIONAL,
///     authorityCertSerialNumber [2] INTEGER OPTIONAL }
class CAsn1AuthorityKeyIdentifier : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("AuthorityKeyIdentifier");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1OctetString, KeyIdentifier, "keyIdentifier");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1SequenceOf<CAsn1Any>, AuthorityCertIssuer,
                              "authorityCertIssuer");
    CA_ASN1_OPTIONAL_IMPLICIT(2, CAsn1Integer, AuthorityCertSerialNumber,
                              "authorityCertSerialNumber");
    CA_ASN1_END;
};
