#pragma once

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
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "IPAddressFamily";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1OctetString* AddressFamily() const { return m_addressFamily; }
    const CAsn1Any* IpAddressChoice() const { return m_ipAddressChoice; }

  private:
    CAsn1OctetString* m_addressFamily = nullptr;
    CAsn1Any* m_ipAddressChoice = nullptr;
};

// IPAddressRange ::= SEQUENCE {
//     min  IPAddress,     -- without its last zero bits
//     max  IPAddress }    -- without its last one bits     RFC 3779, 2.2.3.8
class CAsn1IpAddressRange : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "IPAddressRange";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1BitString* Min() const { return m_min; }
    const CAsn1BitString* Max() const { return m_max; }

  private:
    CAsn1BitString* m_min = nullptr;
    CAsn1BitString* m_max = nullptr;
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
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ASIdentifiers";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Any* Asnum() const { return m_asnum; }
    const CAsn1Any* Rdi() const { return m_rdi; }

  private:
    CAsn1Any* m_asnum = nullptr;
    CAsn1Any* m_rdi = nullptr;
};

// ASRange ::= SEQUENCE {
//     min  ASId,
//     max  ASId }     RFC 3779, 3.2.3.7
class CAsn1AsRange : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ASRange";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Min() const { return m_min; }
    const CAsn1Integer* Max() const { return m_max; }

  private:
    CAsn1Integer* m_min = nullptr;
    CAsn1Integer* m_max = nullptr;
};
