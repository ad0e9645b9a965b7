#pragma once

#include "asn1/x509/GeneralName.h"

// Values of the attributes of RFC 5755, 4.4.

// IetfAttrSyntax ::= SEQUENCE {
//     policyAuthority  [0] GeneralNames OPTIONAL,
//     values           SEQUENCE OF CHOICE {
//         octets  OCTET STRING,
//         oid     OBJECT IDENTIFIER,
//         string  UTF8String } }     RFC 5755, 4.4
class CAsn1IetfAttrSyntax : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "IetfAttrSyntax";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1GeneralNames* PolicyAuthority() const { return m_policyAuthority; }
    CAsn1SequenceOf<CAsn1Any>* Values() const { return m_values; }

  private:
    CAsn1GeneralNames* m_policyAuthority = nullptr;
    CAsn1SequenceOf<CAsn1Any>* m_values = nullptr;
};

// SvceAuthInfo ::= SEQUENCE {
//     service   GeneralName,
//     ident     GeneralName,
//     authInfo  OCTET STRING OPTIONAL }     RFC 5755, 4.4.1
class CAsn1SvceAuthInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "SvceAuthInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1GeneralName* Service() const { return m_service; }
    CAsn1GeneralName* Ident() const { return m_ident; }
    CAsn1OctetString* AuthInfo() const { return m_authInfo; }

  private:
    CAsn1GeneralName* m_service = nullptr;
    CAsn1GeneralName* m_ident = nullptr;
    CAsn1OctetString* m_authInfo = nullptr;
};

// RoleSyntax ::= SEQUENCE {
//     roleAuthority  [0] GeneralNames OPTIONAL,
//     roleName       [1] GeneralName }   -- explicit: a CHOICE     RFC 5755, 4.4.5
class CAsn1RoleSyntax : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "RoleSyntax";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1GeneralNames* RoleAuthority() const { return m_roleAuthority; }
    CAsn1GeneralName* RoleName() const { return m_roleName; }

  private:
    CAsn1GeneralNames* m_roleAuthority = nullptr;
    CAsn1GeneralName* m_roleName = nullptr;
};

// SecurityCategory ::= SEQUENCE {
//     type   [0] IMPLICIT OBJECT IDENTIFIER,
//     value  [1] EXPLICIT ANY DEFINED BY type }     RFC 5755, 4.4.6
// Some writers tag the value implicitly: Value() is then the element [1] itself.
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
// In RFC 3281 the members are tagged [0], [1] and [2]; both forms are read.
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
