#pragma once

#include "asn1/Asn1Primitives.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// RSAPublicKey ::= SEQUENCE {
//     modulus         INTEGER,
//     publicExponent  INTEGER }     RFC 8017, A.1.1
class CAsn1RsaPublicKey : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "RSAPublicKey";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Modulus() const { return m_modulus; }
    const CAsn1Integer* PublicExponent() const { return m_publicExponent; }

  private:
    CAsn1Integer* m_modulus = nullptr;
    CAsn1Integer* m_publicExponent = nullptr;
};

// RSASSA-PSS-params ::= SEQUENCE {
//     hashAlgorithm     [0] EXPLICIT HashAlgorithm DEFAULT sha1Identifier,
//     maskGenAlgorithm  [1] EXPLICIT MaskGenAlgorithm DEFAULT mgf1SHA1Identifier,
//     saltLength        [2] EXPLICIT INTEGER DEFAULT 20,
//     trailerField      [3] EXPLICIT INTEGER DEFAULT 1 }     RFC 4055, 3.1
// The algorithms are AlgorithmIdentifiers.
class CAsn1RsassaPssParams : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "RSASSA-PSS-params";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    /// Null for SHA-1, the default.
    const CAsn1AlgorithmIdentifier* HashAlgorithm() const { return m_hashAlgorithm; }
    /// Null for MGF1 with SHA-1, the default; its own parameters are those of a digest.
    const CAsn1AlgorithmIdentifier* MaskGenAlgorithm() const { return m_maskGenAlgorithm; }
    /// Octets; null for 20.
    const CAsn1Integer* SaltLength() const { return m_saltLength; }
    /// Null for 1, which stands for the octet 0xBC.
    const CAsn1Integer* TrailerField() const { return m_trailerField; }

  private:
    CAsn1AlgorithmIdentifier* m_hashAlgorithm = nullptr;
    CAsn1AlgorithmIdentifier* m_maskGenAlgorithm = nullptr;
    CAsn1Integer* m_saltLength = nullptr;
    CAsn1Integer* m_trailerField = nullptr;
};

// RSAES-OAEP-params ::= SEQUENCE {
//     hashFunc     [0] EXPLICIT AlgorithmIdentifier DEFAULT sha1Identifier,
//     maskGenFunc  [1] EXPLICIT AlgorithmIdentifier DEFAULT mgf1SHA1Identifier,
//     pSourceFunc  [2] EXPLICIT AlgorithmIdentifier DEFAULT pSpecifiedEmptyIdentifier }
// RFC 4055, 4.1
class CAsn1RsaesOaepParams : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "RSAES-OAEP-params";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    /// Null for SHA-1, the default.
    const CAsn1AlgorithmIdentifier* HashFunc() const { return m_hashFunc; }
    /// Null for MGF1 with SHA-1, the default.
    const CAsn1AlgorithmIdentifier* MaskGenFunc() const { return m_maskGenFunc; }
    /// Null for an empty label; else its parameters are the label.
    const CAsn1AlgorithmIdentifier* PSourceFunc() const { return m_pSourceFunc; }

  private:
    CAsn1AlgorithmIdentifier* m_hashFunc = nullptr;
    CAsn1AlgorithmIdentifier* m_maskGenFunc = nullptr;
    CAsn1AlgorithmIdentifier* m_pSourceFunc = nullptr;
};
