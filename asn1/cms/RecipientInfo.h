#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Time.h"
#include "asn1/cms/SignerIdentifier.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// The kinds of recipients of RFC 5652, 6.2, RFC 8696 and RFC 9629.

// OtherKeyAttribute ::= SEQUENCE {
//     keyAttrId  OBJECT IDENTIFIER,
//     keyAttr    ANY DEFINED BY keyAttrId OPTIONAL }     RFC 5652, 10.2.7
class CAsn1OtherKeyAttribute : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OtherKeyAttribute";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ObjectIdentifier* KeyAttrId() const { return m_keyAttrId; }
    CAsn1Any* KeyAttr() const { return m_keyAttr; }

  private:
    CAsn1ObjectIdentifier* m_keyAttrId = nullptr;
    CAsn1Any* m_keyAttr = nullptr;
};

// KeyTransRecipientInfo ::= SEQUENCE {
//     version                 CMSVersion,     -- INTEGER
//     rid                     RecipientIdentifier,
//     keyEncryptionAlgorithm  KeyEncryptionAlgorithmIdentifier,
//     encryptedKey            EncryptedKey }   -- OCTET STRING     RFC 5652, 6.2.1
class CAsn1KeyTransRecipientInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "KeyTransRecipientInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Version() const { return m_version; }
    CAsn1SignerIdentifier* Rid() const { return m_rid; }
    CAsn1AlgorithmIdentifier* KeyEncryptionAlgorithm() const { return m_keyEncryptionAlgorithm; }
    CAsn1OctetString* EncryptedKey() const { return m_encryptedKey; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1SignerIdentifier* m_rid = nullptr;
    CAsn1AlgorithmIdentifier* m_keyEncryptionAlgorithm = nullptr;
    CAsn1OctetString* m_encryptedKey = nullptr;
};

// OriginatorPublicKey ::= SEQUENCE {
//     algorithm  AlgorithmIdentifier,
//     publicKey  BIT STRING }     RFC 5652, 6.2.2
class CAsn1OriginatorPublicKey : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OriginatorPublicKey";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1AlgorithmIdentifier* Algorithm() const { return m_algorithm; }
    CAsn1BitString* PublicKey() const { return m_publicKey; }

  private:
    CAsn1AlgorithmIdentifier* m_algorithm = nullptr;
    CAsn1BitString* m_publicKey = nullptr;
};

// OriginatorIdentifierOrKey ::= CHOICE {
//     issuerAndSerialNumber  IssuerAndSerialNumber,
//     subjectKeyIdentifier   [0] SubjectKeyIdentifier,     -- OCTET STRING
//     originatorKey          [1] OriginatorPublicKey }     RFC 5652, 6.2.2
class CAsn1OriginatorIdentifierOrKey : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OriginatorIdentifierOrKey";
    static bool Accepts(unsigned char tag) {
        return tag == kAsn1Sequence || (tag & kAsn1ContextBit) != 0;
    }

    void Decode() override;

    CAsn1IssuerAndSerialNumber* IssuerAndSerialNumber() const { return m_issuerAndSerialNumber; }
    CAsn1OctetString* SubjectKeyIdentifier() const { return m_subjectKeyIdentifier; }
    CAsn1OriginatorPublicKey* OriginatorKey() const { return m_originatorKey; }

  private:
    CAsn1IssuerAndSerialNumber* m_issuerAndSerialNumber = nullptr;
    CAsn1OctetString* m_subjectKeyIdentifier = nullptr;
    CAsn1OriginatorPublicKey* m_originatorKey = nullptr;
};

// RecipientKeyIdentifier ::= SEQUENCE {
//     subjectKeyIdentifier  SubjectKeyIdentifier,     -- OCTET STRING
//     date                  GeneralizedTime OPTIONAL,
//     other                 OtherKeyAttribute OPTIONAL }     RFC 5652, 6.2.2
class CAsn1RecipientKeyIdentifier : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "RecipientKeyIdentifier";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1OctetString* SubjectKeyIdentifier() const { return m_subjectKeyIdentifier; }
    CAsn1GeneralizedTime* Date() const { return m_date; }
    CAsn1OtherKeyAttribute* Other() const { return m_other; }

  private:
    CAsn1OctetString* m_subjectKeyIdentifier = nullptr;
    CAsn1GeneralizedTime* m_date = nullptr;
    CAsn1OtherKeyAttribute* m_other = nullptr;
};

// KeyAgreeRecipientIdentifier ::= CHOICE {
//     issuerAndSerialNumber  IssuerAndSerialNumber,
//     rKeyId                 [0] IMPLICIT RecipientKeyIdentifier }     RFC 5652, 6.2.2
class CAsn1KeyAgreeRecipientIdentifier : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "KeyAgreeRecipientIdentifier";
    static bool Accepts(unsigned char tag) {
        return tag == kAsn1Sequence || tag == (kAsn1ContextBit | kAsn1ConstructedBit);
    }

    void Decode() override;

    CAsn1IssuerAndSerialNumber* IssuerAndSerialNumber() const { return m_issuerAndSerialNumber; }
    CAsn1RecipientKeyIdentifier* RKeyId() const { return m_rKeyId; }

  private:
    CAsn1IssuerAndSerialNumber* m_issuerAndSerialNumber = nullptr;
    CAsn1RecipientKeyIdentifier* m_rKeyId = nullptr;
};

// RecipientEncryptedKey ::= SEQUENCE {
//     rid           KeyAgreeRecipientIdentifier,
//     encryptedKey  EncryptedKey }   -- OCTET STRING     RFC 5652, 6.2.2
class CAsn1RecipientEncryptedKey : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "RecipientEncryptedKey";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1KeyAgreeRecipientIdentifier* Rid() const { return m_rid; }
    CAsn1OctetString* EncryptedKey() const { return m_encryptedKey; }

  private:
    CAsn1KeyAgreeRecipientIdentifier* m_rid = nullptr;
    CAsn1OctetString* m_encryptedKey = nullptr;
};

// KeyAgreeRecipientInfo ::= SEQUENCE {
//     version                 CMSVersion,     -- INTEGER
//     originator              [0] EXPLICIT OriginatorIdentifierOrKey,
//     ukm                     [1] EXPLICIT UserKeyingMaterial OPTIONAL,     -- OCTET STRING
//     keyEncryptionAlgorithm  KeyEncryptionAlgorithmIdentifier,
//     recipientEncryptedKeys  SEQUENCE OF RecipientEncryptedKey }     RFC 5652, 6.2.2
class CAsn1KeyAgreeRecipientInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "KeyAgreeRecipientInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Version() const { return m_version; }
    CAsn1OriginatorIdentifierOrKey* Originator() const { return m_originator; }
    CAsn1OctetString* Ukm() const { return m_ukm; }
    CAsn1AlgorithmIdentifier* KeyEncryptionAlgorithm() const { return m_keyEncryptionAlgorithm; }
    CAsn1SequenceOf<CAsn1RecipientEncryptedKey>* RecipientEncryptedKeys() const {
        return m_recipientEncryptedKeys;
    }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1OriginatorIdentifierOrKey* m_originator = nullptr;
    CAsn1OctetString* m_ukm = nullptr;
    CAsn1AlgorithmIdentifier* m_keyEncryptionAlgorithm = nullptr;
    CAsn1SequenceOf<CAsn1RecipientEncryptedKey>* m_recipientEncryptedKeys = nullptr;
};

// KEKIdentifier ::= SEQUENCE {
//     keyIdentifier  OCTET STRING,
//     date           GeneralizedTime OPTIONAL,
//     other          OtherKeyAttribute OPTIONAL }     RFC 5652, 6.2.3
class CAsn1KekIdentifier : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "KEKIdentifier";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1OctetString* KeyIdentifier() const { return m_keyIdentifier; }
    CAsn1GeneralizedTime* Date() const { return m_date; }
    CAsn1OtherKeyAttribute* Other() const { return m_other; }

  private:
    CAsn1OctetString* m_keyIdentifier = nullptr;
    CAsn1GeneralizedTime* m_date = nullptr;
    CAsn1OtherKeyAttribute* m_other = nullptr;
};

// KEKRecipientInfo ::= SEQUENCE {
//     version                 CMSVersion,     -- INTEGER
//     kekid                   KEKIdentifier,
//     keyEncryptionAlgorithm  KeyEncryptionAlgorithmIdentifier,
//     encryptedKey            EncryptedKey }   -- OCTET STRING     RFC 5652, 6.2.3
class CAsn1KekRecipientInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "KEKRecipientInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Version() const { return m_version; }
    CAsn1KekIdentifier* KekId() const { return m_kekId; }
    CAsn1AlgorithmIdentifier* KeyEncryptionAlgorithm() const { return m_keyEncryptionAlgorithm; }
    CAsn1OctetString* EncryptedKey() const { return m_encryptedKey; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1KekIdentifier* m_kekId = nullptr;
    CAsn1AlgorithmIdentifier* m_keyEncryptionAlgorithm = nullptr;
    CAsn1OctetString* m_encryptedKey = nullptr;
};

// PasswordRecipientInfo ::= SEQUENCE {
//     version                 CMSVersion,     -- INTEGER
//     keyDerivationAlgorithm  [0] KeyDerivationAlgorithmIdentifier OPTIONAL,
//     keyEncryptionAlgorithm  KeyEncryptionAlgorithmIdentifier,
//     encryptedKey            EncryptedKey }   -- OCTET STRING     RFC 5652, 6.2.4
class CAsn1PasswordRecipientInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "PasswordRecipientInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Version() const { return m_version; }
    CAsn1AlgorithmIdentifier* KeyDerivationAlgorithm() const { return m_keyDerivationAlgorithm; }
    CAsn1AlgorithmIdentifier* KeyEncryptionAlgorithm() const { return m_keyEncryptionAlgorithm; }
    CAsn1OctetString* EncryptedKey() const { return m_encryptedKey; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1AlgorithmIdentifier* m_keyDerivationAlgorithm = nullptr;
    CAsn1AlgorithmIdentifier* m_keyEncryptionAlgorithm = nullptr;
    CAsn1OctetString* m_encryptedKey = nullptr;
};

// OtherRecipientInfo ::= SEQUENCE {
//     oriType   OBJECT IDENTIFIER,
//     oriValue  ANY DEFINED BY oriType }     RFC 5652, 6.2.5
class CAsn1OtherRecipientInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OtherRecipientInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1ObjectIdentifier* OriType() const { return m_oriType; }
    CAsn1Any* OriValue() const { return m_oriValue; }

  private:
    CAsn1ObjectIdentifier* m_oriType = nullptr;
    CAsn1Any* m_oriValue = nullptr;
};

// KEMRecipientInfo ::= SEQUENCE {     -- an oriValue
//     version       CMSVersion,     -- INTEGER
//     rid           RecipientIdentifier,
//     kem           KEMAlgorithmIdentifier,
//     kemct         OCTET STRING,
//     kdf           KeyDerivationAlgorithmIdentifier,
//     kekLength     INTEGER,
//     ukm           [0] EXPLICIT UserKeyingMaterial OPTIONAL,     -- OCTET STRING
//     wrap          KeyEncryptionAlgorithmIdentifier,
//     encryptedKey  EncryptedKey }   -- OCTET STRING     RFC 9629, 3
class CAsn1KemRecipientInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "KEMRecipientInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Version() const { return m_version; }
    CAsn1SignerIdentifier* Rid() const { return m_rid; }
    CAsn1AlgorithmIdentifier* Kem() const { return m_kem; }
    CAsn1OctetString* Kemct() const { return m_kemct; }
    CAsn1AlgorithmIdentifier* Kdf() const { return m_kdf; }
    CAsn1Integer* KekLength() const { return m_kekLength; }
    CAsn1OctetString* Ukm() const { return m_ukm; }
    CAsn1AlgorithmIdentifier* Wrap() const { return m_wrap; }
    CAsn1OctetString* EncryptedKey() const { return m_encryptedKey; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1SignerIdentifier* m_rid = nullptr;
    CAsn1AlgorithmIdentifier* m_kem = nullptr;
    CAsn1OctetString* m_kemct = nullptr;
    CAsn1AlgorithmIdentifier* m_kdf = nullptr;
    CAsn1Integer* m_kekLength = nullptr;
    CAsn1OctetString* m_ukm = nullptr;
    CAsn1AlgorithmIdentifier* m_wrap = nullptr;
    CAsn1OctetString* m_encryptedKey = nullptr;
};

// KeyTransPSKRecipientInfo ::= SEQUENCE {     -- an oriValue
//     version                 CMSVersion,     -- INTEGER
//     pskid                   PreSharedKeyIdentifier,     -- OCTET STRING
//     kdfAlgorithm            KeyDerivationAlgorithmIdentifier,
//     keyEncryptionAlgorithm  KeyEncryptionAlgorithmIdentifier,
//     ktris                   SEQUENCE OF KeyTransRecipientInfo,
//     encryptedKey            EncryptedKey }   -- OCTET STRING     RFC 8696, 3
class CAsn1KeyTransPskRecipientInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "KeyTransPSKRecipientInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Version() const { return m_version; }
    const CAsn1OctetString* PskId() const { return m_pskId; }
    const CAsn1AlgorithmIdentifier* KdfAlgorithm() const { return m_kdfAlgorithm; }
    const CAsn1AlgorithmIdentifier* KeyEncryptionAlgorithm() const {
        return m_keyEncryptionAlgorithm;
    }
    const CAsn1SequenceOf<CAsn1KeyTransRecipientInfo>* Ktris() const { return m_ktris; }
    const CAsn1OctetString* EncryptedKey() const { return m_encryptedKey; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1OctetString* m_pskId = nullptr;
    CAsn1AlgorithmIdentifier* m_kdfAlgorithm = nullptr;
    CAsn1AlgorithmIdentifier* m_keyEncryptionAlgorithm = nullptr;
    CAsn1SequenceOf<CAsn1KeyTransRecipientInfo>* m_ktris = nullptr;
    CAsn1OctetString* m_encryptedKey = nullptr;
};

// KeyAgreePSKRecipientInfo ::= SEQUENCE {     -- an oriValue
//     version                 CMSVersion,     -- INTEGER
//     pskid                   PreSharedKeyIdentifier,     -- OCTET STRING
//     originator              [0] EXPLICIT OriginatorIdentifierOrKey,
//     ukm                     [1] EXPLICIT UserKeyingMaterial OPTIONAL,     --
//     OCTET STRING kdfAlgorithm            KeyDerivationAlgorithmIdentifier,
//     keyEncryptionAlgorithm  KeyEncryptionAlgorithmIdentifier,
//     recipientEncryptedKeys  SEQUENCE OF RecipientEncryptedKey }     RFC 8696,
//     4
class CAsn1KeyAgreePskRecipientInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "KeyAgreePSKRecipientInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Version() const { return m_version; }
    const CAsn1OctetString* PskId() const { return m_pskId; }
    const CAsn1OriginatorIdentifierOrKey* Originator() const { return m_originator; }
    const CAsn1OctetString* Ukm() const { return m_ukm; }
    const CAsn1AlgorithmIdentifier* KdfAlgorithm() const { return m_kdfAlgorithm; }
    const CAsn1AlgorithmIdentifier* KeyEncryptionAlgorithm() const {
        return m_keyEncryptionAlgorithm;
    }
    const CAsn1SequenceOf<CAsn1RecipientEncryptedKey>* RecipientEncryptedKeys() const {
        return m_recipientEncryptedKeys;
    }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1OctetString* m_pskId = nullptr;
    CAsn1OriginatorIdentifierOrKey* m_originator = nullptr;
    CAsn1OctetString* m_ukm = nullptr;
    CAsn1AlgorithmIdentifier* m_kdfAlgorithm = nullptr;
    CAsn1AlgorithmIdentifier* m_keyEncryptionAlgorithm = nullptr;
    CAsn1SequenceOf<CAsn1RecipientEncryptedKey>* m_recipientEncryptedKeys = nullptr;
};

// RecipientInfo ::= CHOICE {
//     ktri   KeyTransRecipientInfo,
//     kari   [1] KeyAgreeRecipientInfo,
//     kekri  [2] KEKRecipientInfo,
//     pwri   [3] PasswordRecipientInfo,
//     ori    [4] OtherRecipientInfo }     RFC 5652, 6.2
class CAsn1RecipientInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "RecipientInfo";
    static bool Accepts(unsigned char tag) {
        return tag == kAsn1Sequence || (tag & kAsn1ContextBit) != 0;
    }

    void Decode() override;

    CAsn1KeyTransRecipientInfo* Ktri() const { return m_ktri; }
    CAsn1KeyAgreeRecipientInfo* Kari() const { return m_kari; }
    CAsn1KekRecipientInfo* Kekri() const { return m_kekri; }
    CAsn1PasswordRecipientInfo* Pwri() const { return m_pwri; }
    CAsn1OtherRecipientInfo* Ori() const { return m_ori; }

  private:
    CAsn1KeyTransRecipientInfo* m_ktri = nullptr;
    CAsn1KeyAgreeRecipientInfo* m_kari = nullptr;
    CAsn1KekRecipientInfo* m_kekri = nullptr;
    CAsn1PasswordRecipientInfo* m_pwri = nullptr;
    CAsn1OtherRecipientInfo* m_ori = nullptr;
};
