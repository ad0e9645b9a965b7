#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"
#include "asn1/attributes/Attribute.h"

// What a signer claims to be, and what others say of him.

// ClaimedAttributes ::= SEQUENCE OF Attribute     RFC 5126, 5.11.3
using CAsn1ClaimedAttributes = CAsn1SequenceOf<CAsn1Attribute>;

// SignerAttribute ::= SEQUENCE OF CHOICE {
//     claimedAttributes    [0] ClaimedAttributes,
//     certifiedAttributes  [1] AttributeCertificate }     RFC 5126, 5.11.3
// This class is the CHOICE. The tags are explicit.
class CAsn1SignerAttribute : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "SignerAttribute";
    static bool Accepts(unsigned char tag) { return (tag & kAsn1ContextBit) != 0; }

    void Decode() override;

    CAsn1ClaimedAttributes* ClaimedAttributes() const { return m_claimedAttributes; }
    CAsn1Any* CertifiedAttributes() const { return m_certifiedAttributes; }

  private:
    CAsn1ClaimedAttributes* m_claimedAttributes = nullptr;
    CAsn1Any* m_certifiedAttributes = nullptr;
};

// CertifiedAttributesV2 ::= SEQUENCE OF CHOICE {
//     attributeCertificate       [0] AttributeCertificate,
//     otherAttributeCertificate  [1] SEQUENCE { id OBJECT IDENTIFIER, value ANY OPTIONAL } }
//                                                            ETSI EN 319 122-1, 5.2.6.1
// This class is the CHOICE. The tags are explicit.
class CAsn1CertifiedAttributeV2 : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "CertifiedAttributesV2";
    static bool Accepts(unsigned char tag) { return (tag & kAsn1ContextBit) != 0; }

    void Decode() override;

    CAsn1Any* AttributeCertificate() const { return m_attributeCertificate; }
    CAsn1Any* OtherAttributeCertificate() const { return m_otherAttributeCertificate; }

  private:
    CAsn1Any* m_attributeCertificate = nullptr;
    CAsn1Any* m_otherAttributeCertificate = nullptr;
};

// SignerAttributeV2 ::= SEQUENCE {
//     claimedAttributes      [0] ClaimedAttributes OPTIONAL,
//     certifiedAttributesV2  [1] CertifiedAttributesV2 OPTIONAL,
//     signedAssertions       [2] SEQUENCE OF SignedAssertion OPTIONAL }
//                                                            ETSI EN 319 122-1, 5.2.6.1
// The tags are explicit.
class CAsn1SignerAttributeV2 : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "SignerAttributeV2";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ClaimedAttributes* ClaimedAttributes() const { return m_claimedAttributes; }
    CAsn1SequenceOf<CAsn1CertifiedAttributeV2>* CertifiedAttributes() const {
        return m_certifiedAttributes;
    }
    CAsn1SequenceOf<CAsn1Any>* SignedAssertions() const { return m_signedAssertions; }

  private:
    CAsn1ClaimedAttributes* m_claimedAttributes = nullptr;
    CAsn1SequenceOf<CAsn1CertifiedAttributeV2>* m_certifiedAttributes = nullptr;
    CAsn1SequenceOf<CAsn1Any>* m_signedAssertions = nullptr;
};
