#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
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
// Decode() is written out: the secret numbers are judged, but nobody is given them.
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
    CA_ASN1_SEQUENCE("DSAPrivateKey");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1Integer, P, "p");
    CA_ASN1_REQUIRED(CAsn1Integer, Q, "q");
    CA_ASN1_REQUIRED(CAsn1Integer, G, "g");
    CA_ASN1_REQUIRED(CAsn1Integer, Y, "y");
    CA_ASN1_REQUIRED(CAsn1Integer, X, "x");
    CA_ASN1_END;
};

// ECPrivateKey ::= SEQUENCE {
//     version     INTEGER,
//     privateKey  OCTET STRING,
//     parameters  [0] EXPLICIT EcpkParameters OPTIONAL,
//     publicKey   [1] EXPLICIT BIT STRING OPTIONAL }     RFC 5915, 3
class CAsn1EcPrivateKey : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ECPrivateKey");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1OctetString, PrivateKey, "privateKey");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1EcpkParameters, Parameters, "parameters");
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1BitString, PublicKey, "publicKey");
    CA_ASN1_END;
};
