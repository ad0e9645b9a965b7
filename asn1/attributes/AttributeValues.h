#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/x509/GeneralName.h"

// Values of the attributes of RFC 5755, 4.4.

// IetfAttrSyntax ::= SEQUENCE {
//     policyAuthority  [0] GeneralNames OPTIONAL,
//     values           SEQUENCE OF CHOICE {
//         octets  OCTET STRING,
//         oid     OBJECT IDENTIFIER,
//         string  UTF8String } }     RFC 5755, 4.4
class CAsn1IetfAttrSyntax : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("IetfAttrSyntax");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1GeneralNames, PolicyAuthority, "policyAuthority");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1Any>, Values, "values");
    CA_ASN1_END;
};

// SvceAuthInfo ::= SEQUENCE {
//     service   GeneralName,
//     ident     GeneralName,
//     authInfo  OCTET STRING OPTIONAL }     RFC 5755, 4.4.1
class CAsn1SvceAuthInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("SvceAuthInfo");
    CA_ASN1_REQUIRED(CAsn1GeneralName, Service, "service");
    CA_ASN1_REQUIRED(CAsn1GeneralName, Ident, "ident");
    CA_ASN1_OPTIONAL(CAsn1OctetString, AuthInfo, "authInfo");
    CA_ASN1_END;
};

// RoleSyntax ::= SEQUENCE {
//     roleAuthority  [0] GeneralNames OPTIONAL,
//     roleName       [1] GeneralName }   -- explicit: a CHOICE     RFC 5755, 4.4.5
class CAsn1RoleSyntax : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("RoleSyntax");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1GeneralNames, RoleAuthority, "roleAuthority");
    CA_ASN1_REQUIRED_EXPLICIT(1, CAsn1GeneralName, RoleName, "roleName");
    CA_ASN1_END;
};

// SecurityCategory ::= SEQUENCE {
//     type   [0] IMPLICIT OBJECT IDENTIFIER,
//     value  [1] EXPLICIT ANY DEFINED BY type }     RFC 5755, 4.4.6
// Some writers tag the value implicitly: Value() is then the element [1] itself. No line of a member
// says that, so Decode() is written out.
class CAsn1SecurityCategory : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "SecurityCategory";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ObjectIdentifier* Type() const { return m_type; }
    CAsn1Any* Value() const { return m_value; }

  private:
    CAsn1ObjectIdentifier* m_type = nullptr;
    CAsn1Any* m_value = nullptr;
};

// Clearance ::= SEQUENCE {
//     policyId            OBJECT IDENTIFIER,
//     classList           ClassList DEFAULT {unclassified},     -- BIT STRING
//     securityCategories  SET OF SecurityCategory OPTIONAL }     RFC 5755, 4.4.6
// In RFC 3281 the members are tagged [0], [1] and [2]; both forms are read. The first member tells
// which, so Decode() is written out.
class CAsn1Clearance : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Clearance";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ObjectIdentifier* PolicyId() const { return m_policyId; }
    CAsn1BitString* ClassList() const { return m_classList; }
    CAsn1SetOf<CAsn1SecurityCategory>* SecurityCategories() const { return m_securityCategories; }

  private:
    CAsn1ObjectIdentifier* m_policyId = nullptr;
    CAsn1BitString* m_classList = nullptr;
    CAsn1SetOf<CAsn1SecurityCategory>* m_securityCategories = nullptr;
};
