#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/attributes/Attribute.h"
#include "asn1/cms/SignerIdentifier.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// SignerInfo ::= SEQUENCE {
//     version             CMSVersion,     -- INTEGER
//     sid                 SignerIdentifier,
//     digestAlgorithm     DigestAlgorithmIdentifier,
//     signedAttrs         [0] IMPLICIT SET OF Attribute OPTIONAL,
//     signatureAlgorithm  SignatureAlgorithmIdentifier,
//     signature           SignatureValue,     -- OCTET STRING
//     unsignedAttrs       [1] IMPLICIT SET OF Attribute OPTIONAL }     RFC 5652, 5.3
// As in RFC 2315 (9.2), under other names. A countersignature (RFC 5652, 11.4) is one, too.
class CAsn1SignerInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "SignerInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Version() const { return m_version; }
    CAsn1SignerIdentifier* Sid() const { return m_sid; }
    CAsn1AlgorithmIdentifier* DigestAlgorithm() const { return m_digestAlgorithm; }
    CAsn1SetOf<CAsn1Attribute>* SignedAttrs() const { return m_signedAttrs; }
    CAsn1AlgorithmIdentifier* SignatureAlgorithm() const { return m_signatureAlgorithm; }
    CAsn1OctetString* Signature() const { return m_signature; }
    CAsn1SetOf<CAsn1Attribute>* UnsignedAttrs() const { return m_unsignedAttrs; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1SignerIdentifier* m_sid = nullptr;
    CAsn1AlgorithmIdentifier* m_digestAlgorithm = nullptr;
    CAsn1SetOf<CAsn1Attribute>* m_signedAttrs = nullptr;
    CAsn1AlgorithmIdentifier* m_signatureAlgorithm = nullptr;
    CAsn1OctetString* m_signature = nullptr;
    CAsn1SetOf<CAsn1Attribute>* m_unsignedAttrs = nullptr;
};
