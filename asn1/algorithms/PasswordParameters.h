#pragma once

#include "asn1/Asn1Primitives.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// How keys come from passwords.

// PBEParameter ::= SEQUENCE {
//     salt            OCTET STRING,
//     iterationCount  INTEGER }     RFC 8018, A.3
// pkcs-12PbeParams (RFC 7292, C) is the same.
class CAsn1PbeParameter : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "PBEParameter";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1OctetString* Salt() const { return m_salt; }
    const CAsn1Integer* IterationCount() const { return m_iterationCount; }

  private:
    CAsn1OctetString* m_salt = nullptr;
    CAsn1Integer* m_iterationCount = nullptr;
};

using CAsn1Pkcs12PbeParams = CAsn1PbeParameter;

// CHOICE {
//     specified    OCTET STRING,
//     otherSource  AlgorithmIdentifier }     RFC 8018, A.2
class CAsn1Pbkdf2Salt : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Salt";
    static bool Accepts(unsigned char tag) {
        return tag == kAsn1OctetString || tag == kAsn1ConstructedOctetString ||
               tag == kAsn1Sequence;
    }

    void Decode() override;

    const CAsn1OctetString* Specified() const { return m_specified; }
    const CAsn1AlgorithmIdentifier* OtherSource() const { return m_otherSource; }

  private:
    CAsn1OctetString* m_specified = nullptr;
    CAsn1AlgorithmIdentifier* m_otherSource = nullptr;
};

// PBKDF2-params ::= SEQUENCE {
//     salt            CHOICE { specified, otherSource },
//     iterationCount  INTEGER,
//     keyLength       INTEGER OPTIONAL,
//     prf             AlgorithmIdentifier DEFAULT algid-hmacWithSHA1 }     RFC 8018, A.2
class CAsn1Pbkdf2Params : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "PBKDF2-params";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Pbkdf2Salt* Salt() const { return m_salt; }
    const CAsn1Integer* IterationCount() const { return m_iterationCount; }
    /// Octets.
    const CAsn1Integer* KeyLength() const { return m_keyLength; }
    /// Null for HMAC with SHA-1, the default.
    const CAsn1AlgorithmIdentifier* Prf() const { return m_prf; }

  private:
    CAsn1Pbkdf2Salt* m_salt = nullptr;
    CAsn1Integer* m_iterationCount = nullptr;
    CAsn1Integer* m_keyLength = nullptr;
    CAsn1AlgorithmIdentifier* m_prf = nullptr;
};

// PBES2-params ::= SEQUENCE {
//     keyDerivationFunc  AlgorithmIdentifier,
//     encryptionScheme   AlgorithmIdentifier }     RFC 8018, A.4
class CAsn1Pbes2Params : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "PBES2-params";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1AlgorithmIdentifier* KeyDerivationFunc() const { return m_keyDerivationFunc; }
    const CAsn1AlgorithmIdentifier* EncryptionScheme() const { return m_encryptionScheme; }

  private:
    CAsn1AlgorithmIdentifier* m_keyDerivationFunc = nullptr;
    CAsn1AlgorithmIdentifier* m_encryptionScheme = nullptr;
};

// PBMAC1-params ::= SEQUENCE {
//     keyDerivationFunc  AlgorithmIdentifier,
//     messageAuthScheme  AlgorithmIdentifier }     RFC 8018, A.5
class CAsn1Pbmac1Params : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "PBMAC1-params";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1AlgorithmIdentifier* KeyDerivationFunc() const { return m_keyDerivationFunc; }
    const CAsn1AlgorithmIdentifier* MessageAuthScheme() const { return m_messageAuthScheme; }

  private:
    CAsn1AlgorithmIdentifier* m_keyDerivationFunc = nullptr;
    CAsn1AlgorithmIdentifier* m_messageAuthScheme = nullptr;
};

// scrypt-params ::= SEQUENCE {
//     salt                      OCTET STRING,
//     costParameter             INTEGER,
//     blockSize                 INTEGER,
//     parallelizationParameter  INTEGER,
//     keyLength                 INTEGER OPTIONAL }     RFC 7914, 7
class CAsn1ScryptParams : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "scrypt-params";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1OctetString* Salt() const { return m_salt; }
    const CAsn1Integer* CostParameter() const { return m_costParameter; }
    const CAsn1Integer* BlockSize() const { return m_blockSize; }
    const CAsn1Integer* ParallelizationParameter() const { return m_parallelizationParameter; }
    /// Octets.
    const CAsn1Integer* KeyLength() const { return m_keyLength; }

  private:
    CAsn1OctetString* m_salt = nullptr;
    CAsn1Integer* m_costParameter = nullptr;
    CAsn1Integer* m_blockSize = nullptr;
    CAsn1Integer* m_parallelizationParameter = nullptr;
    CAsn1Integer* m_keyLength = nullptr;
};
