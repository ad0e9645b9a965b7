#pragma once

#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Typed.h"

// The groups that keys of DSA and Diffie-Hellman live in, and the signature values they give.

// Dss-Parms ::= SEQUENCE {
//     p  INTEGER,
//     q  INTEGER,
//     g  INTEGER }     RFC 3279, 2.3.2
class CAsn1DssParms : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Dss-Parms";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* P() const { return m_p; }
    const CAsn1Integer* Q() const { return m_q; }
    const CAsn1Integer* G() const { return m_g; }

  private:
    CAsn1Integer* m_p = nullptr;
    CAsn1Integer* m_q = nullptr;
    CAsn1Integer* m_g = nullptr;
};

// Dss-Sig-Value ::= SEQUENCE {
//     r  INTEGER,
//     s  INTEGER }     RFC 3279, 2.2.2
// ECDSA-Sig-Value (2.2.3) is the same.
class CAsn1DssSigValue : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Dss-Sig-Value";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* R() const { return m_r; }
    const CAsn1Integer* S() const { return m_s; }

  private:
    CAsn1Integer* m_r = nullptr;
    CAsn1Integer* m_s = nullptr;
};

using CAsn1EcdsaSigValue = CAsn1DssSigValue;

// ValidationParms ::= SEQUENCE {
//     seed         BIT STRING,
//     pgenCounter  INTEGER }     RFC 3279, 2.3.3
class CAsn1ValidationParms : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ValidationParms";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1BitString* Seed() const { return m_seed; }
    const CAsn1Integer* PgenCounter() const { return m_pgenCounter; }

  private:
    CAsn1BitString* m_seed = nullptr;
    CAsn1Integer* m_pgenCounter = nullptr;
};

// DomainParameters ::= SEQUENCE {
//     p                INTEGER,
//     g                INTEGER,
//     q                INTEGER,
//     j                INTEGER OPTIONAL,
//     validationParms  ValidationParms OPTIONAL }     RFC 3279, 2.3.3
class CAsn1DomainParameters : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "DomainParameters";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* P() const { return m_p; }
    const CAsn1Integer* G() const { return m_g; }
    const CAsn1Integer* Q() const { return m_q; }
    const CAsn1Integer* J() const { return m_j; }
    const CAsn1ValidationParms* ValidationParms() const { return m_validationParms; }

  private:
    CAsn1Integer* m_p = nullptr;
    CAsn1Integer* m_g = nullptr;
    CAsn1Integer* m_q = nullptr;
    CAsn1Integer* m_j = nullptr;
    CAsn1ValidationParms* m_validationParms = nullptr;
};

// DHParameter ::= SEQUENCE {
//     prime               INTEGER,
//     base                INTEGER,
//     privateValueLength  INTEGER OPTIONAL }     PKCS #3, 9
class CAsn1DhParameter : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "DHParameter";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Prime() const { return m_prime; }
    const CAsn1Integer* Base() const { return m_base; }
    /// Bits.
    const CAsn1Integer* PrivateValueLength() const { return m_privateValueLength; }

  private:
    CAsn1Integer* m_prime = nullptr;
    CAsn1Integer* m_base = nullptr;
    CAsn1Integer* m_privateValueLength = nullptr;
};
