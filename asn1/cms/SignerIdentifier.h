#pragma once

#include "asn1/Asn1Primitives.h"
#include "asn1/x509/Name.h"

// IssuerAndSerialNumber ::= SEQUENCE {
//     issuer        Name,
//     serialNumber  CertificateSerialNumber }   -- INTEGER     RFC 5652, 10.2.4
class CAsn1IssuerAndSerialNumber : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "IssuerAndSerialNumber";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Name* Issuer() const { return m_issuer; }
    CAsn1Integer* SerialNumber() const { return m_serialNumber; }

  private:
    CAsn1Name* m_issuer = nullptr;
    CAsn1Integer* m_serialNumber = nullptr;
};

// SignerIdentifier ::= CHOICE {
//     issuerAndSerialNumber  IssuerAndSerialNumber,
//     subjectKeyIdentifier   [0] SubjectKeyIdentifier }   -- OCTET STRING     RFC 5652, 5.3
// RecipientIdentifier (RFC 5652, 6.2.1) is the same.
class CAsn1SignerIdentifier : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "SignerIdentifier";
    static bool Accepts(unsigned char tag) {
        return tag == kAsn1Sequence ||
               (tag | kAsn1ConstructedBit) == (kAsn1ContextBit | kAsn1ConstructedBit);
    }

    void Decode() override;

    CAsn1IssuerAndSerialNumber* IssuerAndSerialNumber() const { return m_issuerAndSerialNumber; }
    CAsn1OctetString* SubjectKeyIdentifier() const { return m_subjectKeyIdentifier; }

  private:
    CAsn1IssuerAndSerialNumber* m_issuerAndSerialNumber = nullptr;
    CAsn1OctetString* m_subjectKeyIdentifier = nullptr;
};
