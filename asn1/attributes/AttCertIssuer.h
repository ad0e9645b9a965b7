#pragma once

#include "asn1/attributes/Holder.h"

// V2Form ::= SEQUENCE {
//     issuerName         GeneralNames OPTIONAL,
//     baseCertificateID  [0] IssuerSerial OPTIONAL,
//     objectDigestInfo   [1] ObjectDigestInfo OPTIONAL }     RFC 5755, 4.1
class CAsn1V2Form : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "V2Form";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1GeneralNames* IssuerName() const { return m_issuerName; }
    CAsn1IssuerSerial* BaseCertificateId() const { return m_baseCertificateId; }
    CAsn1ObjectDigestInfo* ObjectDigestInfo() const { return m_objectDigestInfo; }

  private:
    CAsn1GeneralNames* m_issuerName = nullptr;
    CAsn1IssuerSerial* m_baseCertificateId = nullptr;
    CAsn1ObjectDigestInfo* m_objectDigestInfo = nullptr;
};

// AttCertIssuer ::= CHOICE {
//     v1Form  GeneralNames,
//     v2Form  [0] V2Form }     RFC 5755, 4.1
class CAsn1AttCertIssuer : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "AttCertIssuer";
    static bool Accepts(unsigned char tag) {
        return tag == kAsn1Sequence || tag == (kAsn1ContextBit | kAsn1ConstructedBit);
    }

    void Decode() override;

    CAsn1GeneralNames* V1Form() const { return m_v1Form; }
    CAsn1V2Form* V2Form() const { return m_v2Form; }

  private:
    CAsn1GeneralNames* m_v1Form = nullptr;
    CAsn1V2Form* m_v2Form = nullptr;
};
