#pragma once

#include "asn1/Asn1Primitives.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// CertID ::= SEQUENCE {
//     hashAlgorithm   AlgorithmIdentifier,
//     issuerNameHash  OCTET STRING,     -- of the issuer's encoded name
//     issuerKeyHash   OCTET STRING,     -- of the octets of the issuer's key
//     serialNumber    CertificateSerialNumber }   -- INTEGER     RFC 6960, 4.1.1
class CAsn1CertId : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "CertID";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1AlgorithmIdentifier* HashAlgorithm() const { return m_hashAlgorithm; }
    CAsn1OctetString* IssuerNameHash() const { return m_issuerNameHash; }
    CAsn1OctetString* IssuerKeyHash() const { return m_issuerKeyHash; }
    CAsn1Integer* SerialNumber() const { return m_serialNumber; }

  private:
    CAsn1AlgorithmIdentifier* m_hashAlgorithm = nullptr;
    CAsn1OctetString* m_issuerNameHash = nullptr;
    CAsn1OctetString* m_issuerKeyHash = nullptr;
    CAsn1Integer* m_serialNumber = nullptr;
};
