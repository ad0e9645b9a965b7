#pragma once

#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Time.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/Extension.h"

// MessageImprint ::= SEQUENCE {
//     hashAlgorithm  AlgorithmIdentifier,
//     hashedMessage  OCTET STRING }     RFC 3161, 2.4.1
class CAsn1MessageImprint : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "MessageImprint";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1AlgorithmIdentifier* HashAlgorithm() const { return m_hashAlgorithm; }
    CAsn1OctetString* HashedMessage() const { return m_hashedMessage; }

  private:
    CAsn1AlgorithmIdentifier* m_hashAlgorithm = nullptr;
    CAsn1OctetString* m_hashedMessage = nullptr;
};

// Accuracy ::= SEQUENCE {
//     seconds  INTEGER OPTIONAL,
//     millis   [0] INTEGER (1..999) OPTIONAL,
//     micros   [1] INTEGER (1..999) OPTIONAL }     RFC 3161, 2.4.2
class CAsn1Accuracy : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Accuracy";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Seconds() const { return m_seconds; }
    CAsn1Integer* Millis() const { return m_millis; }
    CAsn1Integer* Micros() const { return m_micros; }

  private:
    CAsn1Integer* m_seconds = nullptr;
    CAsn1Integer* m_millis = nullptr;
    CAsn1Integer* m_micros = nullptr;
};

// TSTInfo ::= SEQUENCE {
//     version         INTEGER,
//     policy          TSAPolicyId,     -- OBJECT IDENTIFIER
//     messageImprint  MessageImprint,
//     serialNumber    INTEGER,
//     genTime         GeneralizedTime,
//     accuracy        Accuracy OPTIONAL,
//     ordering        BOOLEAN DEFAULT FALSE,
//     nonce           INTEGER OPTIONAL,
//     tsa             [0] GeneralName OPTIONAL,     -- explicit: a CHOICE
//     extensions      [1] IMPLICIT Extensions OPTIONAL }     RFC 3161, 2.4.2
class CAsn1TstInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "TSTInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Version() const { return m_version; }
    CAsn1ObjectIdentifier* Policy() const { return m_policy; }
    CAsn1MessageImprint* MessageImprint() const { return m_messageImprint; }
    CAsn1Integer* SerialNumber() const { return m_serialNumber; }
    CAsn1GeneralizedTime* GenTime() const { return m_genTime; }
    CAsn1Accuracy* Accuracy() const { return m_accuracy; }
    bool Ordering() const { return m_ordering; }
    CAsn1Integer* Nonce() const { return m_nonce; }
    CAsn1Any* Tsa() const { return m_tsa; }
    CAsn1Extensions* Extensions() const { return m_extensions; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1ObjectIdentifier* m_policy = nullptr;
    CAsn1MessageImprint* m_messageImprint = nullptr;
    CAsn1Integer* m_serialNumber = nullptr;
    CAsn1GeneralizedTime* m_genTime = nullptr;
    CAsn1Accuracy* m_accuracy = nullptr;
    bool m_ordering = false;
    CAsn1Integer* m_nonce = nullptr;
    CAsn1Any* m_tsa = nullptr;
    CAsn1Extensions* m_extensions = nullptr;
};
