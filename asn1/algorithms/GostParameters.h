#pragma once

#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/x509/SubjectPublicKeyInfo.h"

// GostR3410-2012-PublicKeyParameters ::= SEQUENCE {
//     publicKeyParamSet   OBJECT IDENTIFIER,
//     digestParamSet      OBJECT IDENTIFIER OPTIONAL }     RFC 9215, 4
// GostR3410-94- and GostR3410-2001-PublicKeyParameters have one member more (RFC 4491, 2.3):
//     encryptionParamSet  OBJECT IDENTIFIER OPTIONAL
class CAsn1GostPublicKeyParameters : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "GostR3410-PublicKeyParameters";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ObjectIdentifier* PublicKeyParamSet() const { return m_publicKeyParamSet; }
    const CAsn1ObjectIdentifier* DigestParamSet() const { return m_digestParamSet; }
    const CAsn1ObjectIdentifier* EncryptionParamSet() const { return m_encryptionParamSet; }

  private:
    CAsn1ObjectIdentifier* m_publicKeyParamSet = nullptr;
    CAsn1ObjectIdentifier* m_digestParamSet = nullptr;
    CAsn1ObjectIdentifier* m_encryptionParamSet = nullptr;
};

// Gost28147-89-Parameters ::= SEQUENCE {
//     iv                  Gost28147-89-IV,     -- OCTET STRING, 8 octets
//     encryptionParamSet  OBJECT IDENTIFIER }     RFC 4357, Gost28147-89-EncryptionSyntax
class CAsn1Gost28147Parameters : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Gost28147-89-Parameters";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1OctetString* Iv() const { return m_iv; }
    const CAsn1ObjectIdentifier* EncryptionParamSet() const { return m_encryptionParamSet; }

  private:
    CAsn1OctetString* m_iv = nullptr;
    CAsn1ObjectIdentifier* m_encryptionParamSet = nullptr;
};

// Gost28147-89-KeyWrapParameters ::= SEQUENCE {
//     encryptionParamSet  OBJECT IDENTIFIER,
//     ukm                 OCTET STRING OPTIONAL }     RFC 4357, Gost28147-89-EncryptionSyntax
class CAsn1Gost28147KeyWrapParameters : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Gost28147-89-KeyWrapParameters";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ObjectIdentifier* EncryptionParamSet() const { return m_encryptionParamSet; }
    const CAsn1OctetString* Ukm() const { return m_ukm; }

  private:
    CAsn1ObjectIdentifier* m_encryptionParamSet = nullptr;
    CAsn1OctetString* m_ukm = nullptr;
};

// Gost28147-89-EncryptedKey ::= SEQUENCE {
//     encryptedKey  Gost28147-89-Key,     -- OCTET STRING, 32 octets
//     maskKey       [0] IMPLICIT Gost28147-89-Key OPTIONAL,
//     macKey        Gost28147-89-MAC }   -- OCTET STRING, 4 octets
// RFC 4357, Gost28147-89-EncryptionSyntax
class CAsn1Gost28147EncryptedKey : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Gost28147-89-EncryptedKey";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1OctetString* EncryptedKey() const { return m_encryptedKey; }
    const CAsn1OctetString* MaskKey() const { return m_maskKey; }
    const CAsn1OctetString* MacKey() const { return m_macKey; }

  private:
    CAsn1OctetString* m_encryptedKey = nullptr;
    CAsn1OctetString* m_maskKey = nullptr;
    CAsn1OctetString* m_macKey = nullptr;
};

// GostR3410-TransportParameters ::= SEQUENCE {
//     encryptionParamSet  OBJECT IDENTIFIER,
//     ephemeralPublicKey  [0] IMPLICIT SubjectPublicKeyInfo OPTIONAL,
//     ukm                 OCTET STRING }     RFC 4490, 4.2.1
class CAsn1GostTransportParameters : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "GostR3410-TransportParameters";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ObjectIdentifier* EncryptionParamSet() const { return m_encryptionParamSet; }
    const CAsn1SubjectPublicKeyInfo* EphemeralPublicKey() const { return m_ephemeralPublicKey; }
    const CAsn1OctetString* Ukm() const { return m_ukm; }

  private:
    CAsn1ObjectIdentifier* m_encryptionParamSet = nullptr;
    CAsn1SubjectPublicKeyInfo* m_ephemeralPublicKey = nullptr;
    CAsn1OctetString* m_ukm = nullptr;
};

// GostR3410-KeyTransport ::= SEQUENCE {     -- an EncryptedKey of CMS
//     sessionEncryptedKey  Gost28147-89-EncryptedKey,
//     transportParameters  [0] IMPLICIT GostR3410-TransportParameters OPTIONAL }
// RFC 4490, 4.2.1
class CAsn1GostKeyTransport : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "GostR3410-KeyTransport";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Gost28147EncryptedKey* SessionEncryptedKey() const { return m_sessionEncryptedKey; }
    const CAsn1GostTransportParameters* TransportParameters() const {
        return m_transportParameters;
    }

  private:
    CAsn1Gost28147EncryptedKey* m_sessionEncryptedKey = nullptr;
    CAsn1GostTransportParameters* m_transportParameters = nullptr;
};

// Gost3412-15-Encryption-Parameters ::= SEQUENCE {
//     ukm  OCTET STRING }     RFC 9337 (Magma and Kuznyechik, CTR-ACPKM)
class CAsn1Gost341215EncryptionParameters : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Gost3412-15-Encryption-Parameters";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1OctetString* Ukm() const { return m_ukm; }

  private:
    CAsn1OctetString* m_ukm = nullptr;
};
