#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/x509/PrivateKeyUsagePeriod.h"

// AuthorityKeyId ::= SEQUENCE {
//     keyIdentifier         [0] OCTET STRING OPTIONAL,
//     certIssuer            [1] ANY OPTIONAL,      -- EXPLICIT Name, or GeneralNames
//     certSerialNumber      [2] INTEGER OPTIONAL }     X.509 (1996 draft), 12.2.2.1
class CAsn1OldAuthorityKeyId : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OldAuthorityKeyId";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1OctetString* KeyIdentifier() const { return m_keyIdentifier; }
    const CAsn1SequenceOf<CAsn1Any>* CertIssuer() const { return m_certIssuer; }
    const CAsn1Integer* CertSerialNumber() const { return m_certSerialNumber; }

  private:
    CAsn1OctetString* m_keyIdentifier = nullptr;
    CAsn1SequenceOf<CAsn1Any>* m_certIssuer = nullptr;
    CAsn1Integer* m_certSerialNumber = nullptr;
};

// KeyUsageRestriction ::= SEQUENCE {
//     certPolicySet       SEQUENCE OF CertPolicyId OPTIONAL,     -- SEQUENCE OF OBJECT IDENTIFIER
//     restrictedKeyUsage  KeyUsage OPTIONAL }     X.509 (1996 draft), 12.2.2.5
class CAsn1KeyUsageRestriction : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "KeyUsageRestriction";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1SequenceOf<CAsn1SequenceOf<CAsn1ObjectIdentifier>>* CertPolicySet() const {
        return m_certPolicySet;
    }
    const CAsn1BitString* RestrictedKeyUsage() const { return m_restrictedKeyUsage; }

  private:
    CAsn1SequenceOf<CAsn1SequenceOf<CAsn1ObjectIdentifier>>* m_certPolicySet = nullptr;
    CAsn1BitString* m_restrictedKeyUsage = nullptr;
};

// KeyAttributes ::= SEQUENCE {
//     keyIdentifier          OCTET STRING OPTIONAL,
//     intendedKeyUsage       KeyUsage OPTIONAL,
//     privateKeyUsagePeriod  PrivateKeyUsagePeriod OPTIONAL }     X.509 (1996
//     draft), 12.2.2
class CAsn1OldKeyAttributes : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "KeyAttributes";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1OctetString* KeyIdentifier() const { return m_keyIdentifier; }
    const CAsn1BitString* IntendedKeyUsage() const { return m_intendedKeyUsage; }
    const CAsn1PrivateKeyUsagePeriod* PrivateKeyUsagePeriod() const {
        return m_privateKeyUsagePeriod;
    }

  private:
    CAsn1OctetString* m_keyIdentifier = nullptr;
    CAsn1BitString* m_intendedKeyUsage = nullptr;
    CAsn1PrivateKeyUsagePeriod* m_privateKeyUsagePeriod = nullptr;
};

// BasicConstraints ::= SEQUENCE {
//     subjectType         BIT STRING { endEntity (0), cA (1) },
//     pathLenConstraint   INTEGER OPTIONAL,
//     subtreesConstraint  ANY OPTIONAL }   -- SEQUENCE OF Name     X.509 (1996
//     draft), 12.4.2
class CAsn1OldBasicConstraints : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OldBasicConstraints";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    /// Bit 0: end entity, bit 1: CA.
    const CAsn1BitString* SubjectType() const { return m_subjectType; }
    const CAsn1Integer* PathLenConstraint() const { return m_pathLenConstraint; }
    const CAsn1Any* SubtreesConstraint() const { return m_subtreesConstraint; }

  private:
    CAsn1BitString* m_subjectType = nullptr;
    CAsn1Integer* m_pathLenConstraint = nullptr;
    CAsn1Any* m_subtreesConstraint = nullptr;
};
