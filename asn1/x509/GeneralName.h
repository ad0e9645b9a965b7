#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Strings.h"
#include "asn1/x400/OrAddress.h"
#include "asn1/x509/Name.h"

// OtherName ::= SEQUENCE {
//     type-id  OBJECT IDENTIFIER,
//     value    [0] EXPLICIT ANY DEFINED BY type-id }     RFC 5280, 4.2.1.6
class CAsn1OtherName : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("OtherName");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, TypeId, "type-id");
    CA_ASN1_REQUIRED_EXPLICIT(0, CAsn1Any, Value, "value");
    CA_ASN1_END;
};

// EDIPartyName ::= SEQUENCE {
//     nameAssigner  [0] DirectoryString OPTIONAL,
//     partyName     [1] DirectoryString }     RFC 5280, 4.2.1.6
class CAsn1EdiPartyName : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("EDIPartyName");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1DirectoryString, NameAssigner, "nameAssigner");
    CA_ASN1_REQUIRED_EXPLICIT(1, CAsn1DirectoryString, PartyName, "partyName");
    CA_ASN1_END;
};

// GeneralName ::= CHOICE {
//     otherName                  [0] OtherName,
//     rfc822Name                 [1] IA5String,
//     dNSName                    [2] IA5String,
//     x400Address                [3] ORAddress,
//     directoryName              [4] Name,             -- explicit: a CHOICE
//     ediPartyName               [5] EDIPartyName,
//     uniformResourceIdentifier  [6] IA5String,
//     iPAddress                  [7] OCTET STRING,
//     registeredID               [8] OBJECT IDENTIFIER }     RFC 5280, 4.2.1.6
// One of them is not null after Decode().
class CAsn1GeneralName : public CAsn1TypedObject {
    CA_ASN1_CHOICE("GeneralName");
    CA_ASN1_ALTERNATIVE_IMPLICIT(0, CAsn1OtherName, OtherName, "otherName");
    CA_ASN1_ALTERNATIVE_IMPLICIT(1, CAsn1IA5String, Rfc822Name, "rfc822Name");
    CA_ASN1_ALTERNATIVE_IMPLICIT(2, CAsn1IA5String, DnsName, "dNSName");
    CA_ASN1_ALTERNATIVE_IMPLICIT(3, CAsn1OrAddress, X400Address, "x400Address");
    CA_ASN1_ALTERNATIVE_EXPLICIT(4, CAsn1Name, DirectoryName, "directoryName");
    CA_ASN1_ALTERNATIVE_IMPLICIT(5, CAsn1EdiPartyName, EdiPartyName, "ediPartyName");
    CA_ASN1_ALTERNATIVE_IMPLICIT(6, CAsn1IA5String, Uri, "uniformResourceIdentifier");
    /// 4 or 16 octets; with a mask after them in name constraints (RFC 5280, 4.2.1.10).
    CA_ASN1_ALTERNATIVE_IMPLICIT(7, CAsn1OctetString, IpAddress, "iPAddress");
    CA_ASN1_ALTERNATIVE_IMPLICIT(8, CAsn1ObjectIdentifier, RegisteredId, "registeredID");
    CA_ASN1_END;
};

// GeneralNames ::= SEQUENCE SIZE (1..MAX) OF GeneralName     RFC 5280, 4.2.1.6
using CAsn1GeneralNames = CAsn1SequenceOf<CAsn1GeneralName>;
