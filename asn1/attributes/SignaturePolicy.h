#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/attributes/SigningCertificate.h"
#include "asn1/x509/Name.h"

// SigPolicyQualifierInfo ::= SEQUENCE {
//     sigPolicyQualifierId  OBJECT IDENTIFIER,
//     sigQualifier          ANY DEFINED BY sigPolicyQualifierId OPTIONAL }     RFC 5126, 5.8.1
class CAsn1SigPolicyQualifierInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("SigPolicyQualifierInfo");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, SigPolicyQualifierId, "sigPolicyQualifierId");
    CA_ASN1_OPTIONAL(CAsn1Any, SigQualifier, "sigQualifier");
    CA_ASN1_END;
};

// SignaturePolicyId ::= SEQUENCE {
//     sigPolicyId          SigPolicyId,     -- OBJECT IDENTIFIER
//     sigPolicyHash        OtherHashAlgAndValue OPTIONAL,
//     sigPolicyQualifiers  SEQUENCE OF SigPolicyQualifierInfo OPTIONAL }     RFC 5126, 5.8.1
// Without a hash the policy is implied by what is signed; SignaturePolicyImplied, a NULL, says so
// too. Hash and qualifiers have one tag and either may be missing, so Decode() is written out.
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
    CA_ASN1_SEQUENCE("CommitmentTypeIndication");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, CommitmentTypeId, "commitmentTypeId");
    CA_ASN1_OPTIONAL(CAsn1SequenceOf<CAsn1Any>, CommitmentTypeQualifier, "commitmentTypeQualifier");
    CA_ASN1_END;
};

// SignerLocation ::= SEQUENCE {
//     countryName    [0] DirectoryString OPTIONAL,     -- explicit: a CHOICE
//     localityName   [1] DirectoryString OPTIONAL,
//     postalAdddress [2] SEQUENCE SIZE (1..6) OF DirectoryString OPTIONAL }     RFC 5126, 5.11.2
// The tags are explicit. Some writers leave out the SEQUENCE inside [2]: PostalAddress() is then
// the strings themselves.
class CAsn1SignerLocation : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("SignerLocation");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1DirectoryString, CountryName, "countryName");
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1DirectoryString, LocalityName, "localityName");
    CA_ASN1_OPTIONAL_IMPLICIT(2, CAsn1SequenceOf<CAsn1Any>, PostalAddress, "postalAddress");
    CA_ASN1_END;
};
