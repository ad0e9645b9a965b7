#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/attributes/Attribute.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// OneAsymmetricKey ::= SEQUENCE {
//     version              INTEGER,
//     privateKeyAlgorithm  AlgorithmIdentifier,
//     privateKey           OCTET STRING,
//     attributes           [0] IMPLICIT SET OF Attribute OPTIONAL,
//     publicKey            [1] IMPLICIT BIT STRING OPTIONAL }     RFC 5958, 2
// PrivateKeyInfo (RFC 5208, 5) is the same without the last one.
class CAsn1PrivateKeyInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OneAsymmetricKey";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Version() const { return m_version; }
    const CAsn1AlgorithmIdentifier* PrivateKeyAlgorithm() const { return m_privateKeyAlgorithm; }
    /// Secret; what it is of is said by the algorithm.
    const CAsn1OctetString* PrivateKey() const { return m_privateKey; }
    const CAsn1SetOf<CAsn1Attribute>* Attributes() const { return m_attributes; }
    const CAsn1BitString* PublicKey() const { return m_publicKey; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1AlgorithmIdentifier* m_privateKeyAlgorithm = nullptr;
    CAsn1OctetString* m_privateKey = nullptr;
    CAsn1SetOf<CAsn1Attribute>* m_attributes = nullptr;
    CAsn1BitString* m_publicKey = nullptr;
};

// EncryptedPrivateKeyInfo ::= SEQUENCE {
//     encryptionAlgorithm  AlgorithmIdentifier,
//     encryptedData        OCTET STRING }     RFC 5958, 3
class CAsn1EncryptedPrivateKeyInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "EncryptedPrivateKeyInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1AlgorithmIdentifier* EncryptionAlgorithm() const { return m_encryptionAlgorithm; }
    const CAsn1OctetString* EncryptedData() const { return m_encryptedData; }

  private:
    CAsn1AlgorithmIdentifier* m_encryptionAlgorithm = nullptr;
    CAsn1OctetString* m_encryptedData = nullptr;
};
