#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"

/// PolicyMappings ::= SEQUENCE OF SEQUENCE {                   RFC 5280, 4.2.1.5
///     issuerDomainPolicy   OBJECT IDENTIFIER,
///     subjectDomainPolicy  OBJECT IDENTIFIER }
class CAsn1PolicyMapping : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "PolicyMapping";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ObjectIdentifier* IssuerDomainPolicy() const { return m_issuerDomainPolicy; }
    const CAsn1ObjectIdentifier* SubjectDomainPolicy() const { return m_subjectDomainPolicy; }

  private:
    CAsn1ObjectIdentifier* m_issuerDomainPolicy = nullptr;
    CAsn1ObjectIdentifier* m_subjectDomainPolicy = nullptr;
};

/// PolicyConstraints ::= SEQUENCE {                            RFC 5280, 4.2.1.11
///     requireExplicitPolicy  [0] INTEGER OPTIONAL,
///     inhibitPolicyMapping   [1] INTEGER OPTIONAL }
class CAsn1PolicyConstraints : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "PolicyConstraints";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* RequireExplicitPolicy() const { return m_requireExplicitPolicy; }
    const CAsn1Integer* InhibitPolicyMapping() const { return m_inhibitPolicyMapping; }

  private:
    CAsn1Integer* m_requireExplicitPolicy = nullptr;
    CAsn1Integer* m_inhibitPolicyMapping = nullptr;
};
