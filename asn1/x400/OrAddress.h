#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Strings.h"

// The originator/recipient address of X.400, as RFC 5280 A.1 has it.

// CHOICE { numeric NumericString, printable PrintableString }, as most members of addresses.
class CAsn1NumericOrPrintable : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "NumericOrPrintable";
    static bool Accepts(unsigned char tag) {
        return tag == kAsn1NumericString || tag == kAsn1PrintableString;
    }

    void Decode() override;

    CAsn1NumericString* Numeric() const { return m_numeric; }
    CAsn1PrintableString* Printable() const { return m_printable; }

  private:
    CAsn1NumericString* m_numeric = nullptr;
    CAsn1PrintableString* m_printable = nullptr;
};

// CountryName ::= [APPLICATION 1] CHOICE {
//     x121-dcc-code         NumericString,
//     iso-3166-alpha2-code  PrintableString }
// AdministrationDomainName ::= [APPLICATION 2] CHOICE {
//     numeric    NumericString,
//     printable  PrintableString }     RFC 5280, A.1
template <unsigned char ApplicationTag>
class CAsn1TaggedDomain : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName =
        ApplicationTag == 0x61 ? "CountryName" : "AdministrationDomainName";
    static constexpr unsigned char kTag = ApplicationTag;

    void Decode() override;

    CAsn1NumericOrPrintable* Value() const { return m_value; }

  private:
    CAsn1NumericOrPrintable* m_value = nullptr;
};
using CAsn1CountryName = CAsn1TaggedDomain<0x61>;
using CAsn1AdministrationDomainName = CAsn1TaggedDomain<0x62>;

// PersonalName ::= SET {
//     surname               [0] IMPLICIT PrintableString,
//     given-name            [1] IMPLICIT PrintableString OPTIONAL,
//     initials              [2] IMPLICIT PrintableString OPTIONAL,
//     generation-qualifier  [3] IMPLICIT PrintableString OPTIONAL }     RFC 5280, A.1
class CAsn1PersonalName : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "PersonalName";
    static constexpr unsigned char kTag = kAsn1Set;

    void Decode() override;

    CAsn1PrintableString* Surname() const { return m_surname; }
    CAsn1PrintableString* GivenName() const { return m_givenName; }
    CAsn1PrintableString* Initials() const { return m_initials; }
    CAsn1PrintableString* GenerationQualifier() const { return m_generationQualifier; }

  private:
    CAsn1PrintableString* m_surname = nullptr;
    CAsn1PrintableString* m_givenName = nullptr;
    CAsn1PrintableString* m_initials = nullptr;
    CAsn1PrintableString* m_generationQualifier = nullptr;
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
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "BuiltInStandardAttributes";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1CountryName* CountryName() const { return m_countryName; }
    CAsn1AdministrationDomainName* AdministrationDomainName() const { return m_administration; }
    CAsn1NumericString* NetworkAddress() const { return m_networkAddress; }
    CAsn1PrintableString* TerminalIdentifier() const { return m_terminalIdentifier; }
    CAsn1NumericOrPrintable* PrivateDomainName() const { return m_privateDomainName; }
    CAsn1PrintableString* OrganizationName() const { return m_organizationName; }
    CAsn1NumericString* NumericUserIdentifier() const { return m_numericUserIdentifier; }
    CAsn1PersonalName* PersonalName() const { return m_personalName; }
    CAsn1SequenceOf<CAsn1PrintableString>* OrganizationalUnitNames() const {
        return m_organizationalUnitNames;
    }

  private:
    CAsn1CountryName* m_countryName = nullptr;
    CAsn1AdministrationDomainName* m_administration = nullptr;
    CAsn1NumericString* m_networkAddress = nullptr;
    CAsn1PrintableString* m_terminalIdentifier = nullptr;
    CAsn1NumericOrPrintable* m_privateDomainName = nullptr;
    CAsn1PrintableString* m_organizationName = nullptr;
    CAsn1NumericString* m_numericUserIdentifier = nullptr;
    CAsn1PersonalName* m_personalName = nullptr;
    CAsn1SequenceOf<CAsn1PrintableString>* m_organizationalUnitNames = nullptr;
};

// BuiltInDomainDefinedAttribute ::= SEQUENCE {
//     type   PrintableString,
//     value  PrintableString }     RFC 5280, A.1
class CAsn1DomainDefinedAttribute : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "BuiltInDomainDefinedAttribute";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1PrintableString* Type() const { return m_type; }
    CAsn1PrintableString* Value() const { return m_value; }

  private:
    CAsn1PrintableString* m_type = nullptr;
    CAsn1PrintableString* m_value = nullptr;
};

// ExtensionAttribute ::= SEQUENCE {
//     extension-attribute-type   [0] IMPLICIT INTEGER,
//     extension-attribute-value  [1] ANY DEFINED BY extension-attribute-type }     RFC 5280, A.1
class CAsn1ExtensionAttribute : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ExtensionAttribute";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Type() const { return m_type; }
    CAsn1Any* Value() const { return m_value; }

  private:
    CAsn1Integer* m_type = nullptr;
    CAsn1Any* m_value = nullptr;
};

// ORAddress ::= SEQUENCE {
//     built-in-standard-attributes        BuiltInStandardAttributes,
//     built-in-domain-defined-attributes  SEQUENCE OF BuiltInDomainDefinedAttribute OPTIONAL,
//     extension-attributes                SET OF ExtensionAttribute OPTIONAL }     RFC 5280, A.1
class CAsn1OrAddress : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ORAddress";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1BuiltInStandardAttributes* StandardAttributes() const { return m_standard; }
    CAsn1SequenceOf<CAsn1DomainDefinedAttribute>* DomainDefinedAttributes() const {
        return m_domainDefined;
    }
    CAsn1SetOf<CAsn1ExtensionAttribute>* ExtensionAttributes() const { return m_extensions; }

  private:
    CAsn1BuiltInStandardAttributes* m_standard = nullptr;
    CAsn1SequenceOf<CAsn1DomainDefinedAttribute>* m_domainDefined = nullptr;
    CAsn1SetOf<CAsn1ExtensionAttribute>* m_extensions = nullptr;
};
