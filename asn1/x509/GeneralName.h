#pragma once

#include "asn1/Asn1Strings.h"
#include "asn1/x400/OrAddress.h"
#include "asn1/x509/Name.h"

// OtherName ::= SEQUENCE {
//     type-id  OBJECT IDENTIFIER,
//     value    [0] EXPLICIT ANY DEFINED BY type-id }     RFC 5280, 4.2.1.6
class CAsn1OtherName : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OtherName";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ObjectIdentifier* TypeId() const { return m_typeId; }
    CAsn1Any* Value() const { return m_value; }

  private:
    CAsn1ObjectIdentifier* m_typeId = nullptr;
    CAsn1Any* m_value = nullptr;
};

// EDIPartyName ::= SEQUENCE {
//     nameAssigner  [0] DirectoryString OPTIONAL,
//     partyName     [1] DirectoryString }     RFC 5280, 4.2.1.6
class CAsn1EdiPartyName : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "EDIPartyName";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1DirectoryString* NameAssigner() const { return m_nameAssigner; }
    CAsn1DirectoryString* PartyName() const { return m_partyName; }

  private:
    CAsn1DirectoryString* m_nameAssigner = nullptr;
    CAsn1DirectoryString* m_partyName = nullptr;
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
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "GeneralName";
    static bool Accepts(unsigned char tag) {
        const unsigned number = tag & ~unsigned{kAsn1ContextBit | kAsn1ConstructedBit};
        return (tag & kAsn1ContextBit) != 0 && number <= 8;
    }

    void Decode() override;

    CAsn1OtherName* OtherName() const { return m_otherName; }
    CAsn1IA5String* Rfc822Name() const { return m_rfc822Name; }
    CAsn1IA5String* DnsName() const { return m_dnsName; }
    CAsn1OrAddress* X400Address() const { return m_x400Address; }
    CAsn1Name* DirectoryName() const { return m_directoryName; }
    CAsn1EdiPartyName* EdiPartyName() const { return m_ediPartyName; }
    CAsn1IA5String* Uri() const { return m_uri; }
    /// 4 or 16 octets; with a mask behind them in name constraints (RFC 5280 4.2.1.10).
    CAsn1OctetString* IpAddress() const { return m_ipAddress; }
    CAsn1ObjectIdentifier* RegisteredId() const { return m_registeredId; }

  private:
    CAsn1OtherName* m_otherName = nullptr;
    CAsn1IA5String* m_rfc822Name = nullptr;
    CAsn1IA5String* m_dnsName = nullptr;
    CAsn1OrAddress* m_x400Address = nullptr;
    CAsn1Name* m_directoryName = nullptr;
    CAsn1EdiPartyName* m_ediPartyName = nullptr;
    CAsn1IA5String* m_uri = nullptr;
    CAsn1OctetString* m_ipAddress = nullptr;
    CAsn1ObjectIdentifier* m_registeredId = nullptr;
};

// GeneralNames ::= SEQUENCE SIZE (1..MAX) OF GeneralName     RFC 5280, 4.2.1.6
using CAsn1GeneralNames = CAsn1SequenceOf<CAsn1GeneralName>;
