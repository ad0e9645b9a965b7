#pragma once

#include "asn1/attributes/Holder.h"

// TargetCert ::= SEQUENCE {
//     targetCertificate  IssuerSerial,
//     targetName         GeneralName OPTIONAL,
//     certDigestInfo     ObjectDigestInfo OPTIONAL }     RFC 5755, 4.3.2
class CAsn1TargetCert : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "TargetCert";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1IssuerSerial* TargetCertificate() const { return m_targetCertificate; }
    CAsn1GeneralName* TargetName() const { return m_targetName; }
    CAsn1ObjectDigestInfo* CertDigestInfo() const { return m_certDigestInfo; }

  private:
    CAsn1IssuerSerial* m_targetCertificate = nullptr;
    CAsn1GeneralName* m_targetName = nullptr;
    CAsn1ObjectDigestInfo* m_certDigestInfo = nullptr;
};

// Target ::= CHOICE {
//     targetName   [0] GeneralName,     -- explicit: a CHOICE
//     targetGroup  [1] GeneralName,
//     targetCert   [2] TargetCert }     RFC 5755, 4.3.2
class CAsn1Target : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Target";
    static bool Accepts(unsigned char tag) {
        return tag >= (kAsn1ContextBit | kAsn1ConstructedBit) &&
               tag <= (kAsn1ContextBit | kAsn1ConstructedBit | 2U);
    }

    void Decode() override;

    CAsn1GeneralName* TargetName() const { return m_targetName; }
    CAsn1GeneralName* TargetGroup() const { return m_targetGroup; }
    CAsn1TargetCert* TargetCert() const { return m_targetCert; }

  private:
    CAsn1GeneralName* m_targetName = nullptr;
    CAsn1GeneralName* m_targetGroup = nullptr;
    CAsn1TargetCert* m_targetCert = nullptr;
};

// Targets ::= SEQUENCE OF Target     RFC 5755, 4.3.2
using CAsn1Targets = CAsn1SequenceOf<CAsn1Target>;
