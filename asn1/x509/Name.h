#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"

// AttributeTypeAndValue ::= SEQUENCE {
//     type   AttributeType,     -- OBJECT IDENTIFIER
//     value  AttributeValue }   -- ANY, as a rule a DirectoryString     RFC 5280, 4.1.2.4
class CAsn1AttributeTypeAndValue : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("AttributeTypeAndValue");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, Type, "type");
    CA_ASN1_REQUIRED(CAsn1Any, Value, "value");
    CA_ASN1_END;
};

// RelativeDistinguishedName ::= SET SIZE (1..MAX) OF AttributeTypeAndValue     RFC 5280, 4.1.2.4
class CAsn1RelativeDistinguishedName : public CAsn1SetOf<CAsn1AttributeTypeAndValue> {
  public:
    using CAsn1SetOf<CAsn1AttributeTypeAndValue>::CAsn1ListOf;
    static constexpr const char* kName = "RelativeDistinguishedName";
};

// Name ::= CHOICE { rdnSequence RDNSequence }     -- one alternative: as RDNSequence
// RDNSequence ::= SEQUENCE OF RelativeDistinguishedName     RFC 5280, 4.1.2.4
class CAsn1Name : public CAsn1SequenceOf<CAsn1RelativeDistinguishedName> {
  public:
    using CAsn1SequenceOf<CAsn1RelativeDistinguishedName>::CAsn1ListOf;
    static constexpr const char* kName = "Name";
};

// DirectoryString ::= CHOICE {
//     teletexString    TeletexString,
//     printableString  PrintableString,
//     universalString  UniversalString,
//     utf8String       UTF8String,
//     bmpString        BMPString }     RFC 5280, 4.1.2.4
// The tag of the block says which.
class CAsn1DirectoryString : public CAsn1Any {
  public:
    using CAsn1Any::CAsn1Any;
    static constexpr const char* kName = "DirectoryString";
    static bool Accepts(unsigned char tag) {
        return tag == kAsn1TeletexString || tag == kAsn1PrintableString ||
               tag == kAsn1UniversalString || tag == kAsn1Utf8String || tag == kAsn1UnicodeString;
    }
};
