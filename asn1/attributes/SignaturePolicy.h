#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"
#include "asn1/attributes/SigningCertificate.h"
#include "asn1/x509/Name.h"

// SigPolicyQualifierInfo ::= SEQUENCE {
//     sigPolicyQualifierId  OBJECT IDENTIFIER,
//     sigQualifier          ANY DEFINED BY sigPolicyQualifierId OPTIONAL }     RFC 5126, 5.8.1
class CAsn1SigPolicyQualifierInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "SigPolicyQualifierInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ObjectIdentifier* SigPolicyQualifierId() const { return m_sigPolicyQualifierId; }
    CAsn1Any* SigQualifier() const { return m_sigQualifier; }

  private:
    CAsn1ObjectIdentifier* m_sigPolicyQualifierId = nullptr;
    CAsn1Any* m_sigQualifier = nullptr;
};

// SignaturePolicyId ::= SEQUENCE {
//     sigPolicyId          SigPolicyId,     -- OBJECT IDENTIFIER
//     sigPolicyHash        OtherHashAlgAndValue OPTIONAL,
//     sigPolicyQualifiers  SEQUENCE OF SigPolicyQualifierInfo OPTIONAL }     RFC 5126, 5.8.1
// Without a hash the policy is implied by what is signed; SignaturePolicyImplied, a NULL, says so
// too.
class CAsn1SignaturePolicyId : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "SignaturePolicyId";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ObjectIdentifier* SigPolicyId() const { return m_sigPolicyId; }
    CAsn1OtherHashAlgAndValue* SigPolicyHash() const { return m_sigPolicyHash; }
    CAsn1SequenceOf<CAsn1SigPolicyQualifierInfo>* SigPolicyQualifiers() const {
        return m_sigPolicyQualifiers;
    }

  private:
    CAsn1ObjectIdentifier* m_sigPolicyId = nullptr;
    CAsn1OtherHashAlgAndValue* m_sigPolicyHash = nullptr;
    CAsn1SequenceOf<CAsn1SigPolicyQualifierInfo>* m_sigPolicyQualifiers = nullptr;
};

// CommitmentTypeIndication ::= SEQUENCE {
//     commitmentTypeId         OBJECT IDENTIFIER,
//     commitmentTypeQualifier  SEQUENCE OF CommitmentTypeQualifier OPTIONAL }     RFC 5126, 5.11.1
class CAsn1CommitmentTypeIndication : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "CommitmentTypeIndication";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ObjectIdentifier* CommitmentTypeId() const { return m_commitmentTypeId; }
    CAsn1SequenceOf<CAsn1Any>* CommitmentTypeQualifier() const { return m_commitmentTypeQualifier; }

  private:
    CAsn1ObjectIdentifier* m_commitmentTypeId = nullptr;
    CAsn1SequenceOf<CAsn1Any>* m_commitmentTypeQualifier = nullptr;
};

// SignerLocation ::= SEQUENCE {
//     countryName    [0] DirectoryString OPTIONAL,     -- explicit: a CHOICE
//     localityName   [1] DirectoryString OPTIONAL,
//     postalAdddress [2] SEQUENCE SIZE (1..6) OF DirectoryString OPTIONAL }     RFC 5126, 5.11.2
// The tags are explicit. Some writers leave out the SEQUENCE inside [2]: PostalAddress() is then
// the strings themselves.
class CAsn1SignerLocation : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "SignerLocation";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1DirectoryString* CountryName() const { return m_countryName; }
    CAsn1DirectoryString* LocalityName() const { return m_localityName; }
    CAsn1SequenceOf<CAsn1Any>* PostalAddress() const { return m_postalAddress; }

  private:
    CAsn1DirectoryString* m_countryName = nullptr;
    CAsn1DirectoryString* m_localityName = nullptr;
    CAsn1SequenceOf<CAsn1Any>* m_postalAddress = nullptr;
};
