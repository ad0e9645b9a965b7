#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Strings.h"

// The originator/recipient address of X.400, as RFC 5280, A.1 has it.

// CHOICE { numeric NumericString, printable PrintableString }, as most members of addresses.
class CAsn1NumericOrPrintable : public CAsn1TypedObject {
    CA_ASN1_CHOICE("NumericOrPrintable");
    CA_ASN1_ALTERNATIVE(CAsn1NumericString, Numeric, "numeric");
    CA_ASN1_ALTERNATIVE(CAsn1PrintableString, Printable, "printable");
    CA_ASN1_END;
};

// CountryName ::= [APPLICATION 1] CHOICE {
//     x121-dcc-code         NumericString,
//     iso-3166-alpha2-code  PrintableString }     RFC 5280, A.1
class CAsn1CountryName : public CAsn1TypedObject {
    CA_ASN1_TYPE("CountryName", 0x61);
    CA_ASN1_REQUIRED(CAsn1NumericOrPrintable, Value, "value");
    CA_ASN1_END;
};

// AdministrationDomainName ::= [APPLICATION 2] CHOICE {
//     numeric    NumericString,
//     printable  PrintableString }     RFC 5280, A.1
class CAsn1AdministrationDomainName : public CAsn1TypedObject {
    CA_ASN1_TYPE("AdministrationDomainName", 0x62);
    CA_ASN1_REQUIRED(CAsn1NumericOrPrintable, Value, "value");
    CA_ASN1_END;
};

// PersonalName ::= SET {
//     surname               [0] IMPLICIT PrintableString,
//     given-name            [1] IMPLICIT PrintableString OPTIONAL,
//     initials              [2] IMPLICIT PrintableString OPTIONAL,
//     generation-qualifier  [3] IMPLICIT PrintableString OPTIONAL }     RFC 5280, A.1
class CAsn1PersonalName : public CAsn1TypedObject {
    CA_ASN1_TYPE("PersonalName", kAsn1Set);
    CA_ASN1_REQUIRED_IMPLICIT(0, CAsn1PrintableString, Surname, "surname");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1PrintableString, GivenName, "given-name");
    CA_ASN1_OPTIONAL_IMPLICIT(2, CAsn1PrintableString, Initials, "initials");
    CA_ASN1_OPTIONAL_IMPLICIT(3, CAsn1PrintableString, GenerationQualifier, "generation-qualifier");
    CA_ASN1_END;
};

// BuiltInStandardAttributes ::= SEQUENCE {
//     country-name                CountryName OPTIONAL,
//     administration-domain-name  AdministrationDomainName OPTIONAL,
//     network-address             [0] IMPLICIT NumericString OPTIONAL,
//     terminal-identifier         [1] IMPLICIT PrintableString OPTIONAL,
//     private-domain-name         [2] PrivateDomainName OPTIONAL,   -- numeric or printable
//     organization-name           [3] IMPLICIT PrintableString OPTIONAL,
//     numeric-user-identifier     [4] IMPLICIT NumericString OPTIONAL,
//     personal-name               [5] IMPLICIT PersonalName OPTIONAL,
//     organizational-unit-names   [6] IMPLICIT OrganizationalUnitNames OPTIONAL }
// OrganizationalUnitNames ::= SEQUENCE OF PrintableString     RFC 5280, A.1
class CAsn1BuiltInStandardAttributes : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("BuiltInStandardAttributes");
    CA_ASN1_OPTIONAL(CAsn1CountryName, CountryName, "country-name");
    CA_ASN1_OPTIONAL(CAsn1AdministrationDomainName, AdministrationDomainName,
                     "administration-domain-name");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1NumericString, NetworkAddress, "network-address");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1PrintableString, TerminalIdentifier, "terminal-identifier");
    CA_ASN1_OPTIONAL_EXPLICIT(2, CAsn1NumericOrPrintable, PrivateDomainName, "private-domain-name");
    CA_ASN1_OPTIONAL_IMPLICIT(3, CAsn1PrintableString, OrganizationName, "organization-name");
    CA_ASN1_OPTIONAL_IMPLICIT(4, CAsn1NumericString, NumericUserIdentifier,
                              "numeric-user-identifier");
    CA_ASN1_OPTIONAL_IMPLICIT(5, CAsn1PersonalName, PersonalName, "personal-name");
    CA_ASN1_OPTIONAL_IMPLICIT(6, CAsn1SequenceOf<CAsn1PrintableString>, OrganizationalUnitNames,
                              "organizational-unit-names");
    CA_ASN1_END;
};

// BuiltInDomainDefinedAttribute ::= SEQUENCE {
//     type   PrintableString,
//     value  PrintableString }     RFC 5280, A.1
class CAsn1DomainDefinedAttribute : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("BuiltInDomainDefinedAttribute");
    CA_ASN1_REQUIRED(CAsn1PrintableString, Type, "type");
    CA_ASN1_REQUIRED(CAsn1PrintableString, Value, "value");
    CA_ASN1_END;
};

// ExtensionAttribute ::= SEQUENCE {
//     extension-attribute-type   [0] IMPLICIT INTEGER,
//     extension-attribute-value  [1] ANY DEFINED BY extension-attribute-type }     RFC 5280, A.1
class CAsn1ExtensionAttribute : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ExtensionAttribute");
    CA_ASN1_REQUIRED_IMPLICIT(0, CAsn1Integer, Type, "extension-attribute-type");
    CA_ASN1_REQUIRED_EXPLICIT(1, CAsn1Any, Value, "extension-attribute-value");
    CA_ASN1_END;
};

// ORAddress ::= SEQUENCE {
//     built-in-standard-attributes        BuiltInStandardAttributes,
//     built-in-domain-defined-attributes  SEQUENCE OF BuiltInDomainDefinedAttribute OPTIONAL,
//     extension-attributes                SET OF ExtensionAttribute OPTIONAL }     RFC 5280, A.1
class CAsn1OrAddress : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ORAddress");
    CA_ASN1_REQUIRED(CAsn1BuiltInStandardAttributes, StandardAttributes,
                     "built-in-standard-attributes");
    CA_ASN1_OPTIONAL(CAsn1SequenceOf<CAsn1DomainDefinedAttribute>, DomainDefinedAttributes,
                     "built-in-domain-defined-attributes");
    CA_ASN1_OPTIONAL(CAsn1SetOf<CAsn1ExtensionAttribute>, ExtensionAttributes,
                     "extension-attributes");
    CA_ASN1_END;
};
