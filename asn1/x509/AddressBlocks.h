#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Typed.h"

// IPAddressFamily ::= SEQUENCE {
//     addressFamily    OCTET STRING,          -- two octets, a third one for the SAFI
//     ipAddressChoice  IPAddressChoice }
// IPAddressChoice ::= CHOICE {
//     inherit            NULL,
//     addressesOrRanges  SEQUENCE OF IPAddressOrRange }
// IPAddressOrRange ::= CHOICE {
//     addressPrefix  IPAddress,               -- BIT STRING
//     addressRange   IPAddressRange }     RFC 3779, 2.2.3
class CAsn1IpAddressFamily : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("IPAddressFamily");
    CA_ASN1_REQUIRED(CAsn1OctetString, AddressFamily, "addressFamily");
    CA_ASN1_REQUIRED(CAsn1Any, IpAddressChoice, "ipAddressChoice");
    CA_ASN1_END;
};

// IPAddressRange ::= SEQUENCE {
//     min  IPAddress,     -- without its last zero bits
//     max  IPAddress }    -- without its last one bits     RFC 3779, 2.2.3.8
class CAsn1IpAddressRange : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("IPAddressRange");
    CA_ASN1_REQUIRED(CAsn1BitString, Min, "min");
    CA_ASN1_REQUIRED(CAsn1BitString, Max, "max");
    CA_ASN1_END;
};

// ASIdentifiers ::= SEQUENCE {
//     asnum  [0] EXPLICIT ASIdentifierChoice OPTIONAL,
//     rdi    [1] EXPLICIT ASIdentifierChoice OPTIONAL }
// ASIdentifierChoice ::= CHOICE {
//     inherit        NULL,
//     asIdsOrRanges  SEQUENCE OF ASIdOrRange }
// ASIdOrRange ::= CHOICE {
//     id     ASId,        -- INTEGER
//     range  ASRange }     RFC 3779, 3.2.3
class CAsn1AsIdentifiers : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ASIdentifiers");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1Any, Asnum, "asnum");
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1Any, Rdi, "rdi");
    CA_ASN1_END;
};

// ASRange ::= SEQUENCE {
//     min  ASId,
//     max  ASId }     RFC 3779, 3.2.3.7
class CAsn1AsRange : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ASRange");
    CA_ASN1_REQUIRED(CAsn1Integer, Min, "min");
    CA_ASN1_REQUIRED(CAsn1Integer, Max, "max");
    CA_ASN1_END;
};
