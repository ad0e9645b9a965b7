#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/algorithms/EcParameters.h"

// Private keys as programs keep them by themselves, "BEGIN RSA PRIVATE KEY".

// RSAPrivateKey ::= SEQUENCE {
//     version          INTEGER,
//     modulus          INTEGER,
//     publicExponent   INTEGER,
//     privateExponent  INTEGER,
//     prime1           INTEGER,
//     prime2           INTEGER,
//     exponent1        INTEGER,
//     exponent2        INTEGER,
//     coefficient      INTEGER,
//     otherPrimeInfos  SEQUENCE OF OtherPrimeInfo OPTIONAL }     RFC 8017, A.1.2
class CAsn1RsaPrivateKey : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "RSAPrivateKey";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Version() const { return m_version; }
    const CAsn1Integer* Modulus() const { return m_modulus; }
    const CAsn1Integer* PublicExponent() const { return m_publicExponent; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1Integer* m_modulus = nullptr;
    CAsn1Integer* m_publicExponent = nullptr;
};

// DSAPrivateKey ::= SEQUENCE {
//     version  INTEGER,
//     p        INTEGER,
//     q        INTEGER,
//     g        INTEGER,
//     y        INTEGER,     -- the public key
//     x        INTEGER }
// What OpenSSL writes; there is no standard of it.
class CAsn1DsaPrivateKey : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "DSAPrivateKey";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Version() const { return m_version; }
    const CAsn1Integer* P() const { return m_p; }
    const CAsn1Integer* Q() const { return m_q; }
    const CAsn1Integer* G() const { return m_g; }
    const CAsn1Integer* Y() const { return m_y; }
    const CAsn1Integer* X() const { return m_x; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1Integer* m_p = nullptr;
    CAsn1Integer* m_q = nullptr;
    CAsn1Integer* m_g = nullptr;
    CAsn1Integer* m_y = nullptr;
    CAsn1Integer* m_x = nullptr;
};

// ECPrivateKey ::= SEQUENCE {
//     version     INTEGER,
//     privateKey  OCTET STRING,
//     parameters  [0] EXPLICIT EcpkParameters OPTIONAL,
//     publicKey   [1] EXPLICIT BIT STRING OPTIONAL }     RFC 5915, 3
class CAsn1EcPrivateKey : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ECPrivateKey";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Version() const { return m_version; }
    const CAsn1OctetString* PrivateKey() const { return m_privateKey; }
    const CAsn1EcpkParameters* Parameters() const { return m_parameters; }
    const CAsn1BitString* PublicKey() const { return m_publicKey; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1OctetString* m_privateKey = nullptr;
    CAsn1EcpkParameters* m_parameters = nullptr;
    CAsn1BitString* m_publicKey = nullptr;
};
