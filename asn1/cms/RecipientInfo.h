#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
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
    CA_ASN1_SEQUENCE("OtherKeyAttribute");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, KeyAttrId, "keyAttrId");
    CA_ASN1_OPTIONAL(CAsn1Any, KeyAttr, "keyAttr");
    CA_ASN1_END;
};

// KeyTransRecipientInfo ::= SEQUENCE {
//     version                 CMSVersion,     -- INTEGER
//     rid                     RecipientIdentifier,
//     keyEncryptionAlgorithm  KeyEncryptionAlgorithmIdentifier,
//     encryptedKey            EncryptedKey }   -- OCTET STRING     RFC 5652, 6.2.1
class CAsn1KeyTransRecipientInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("KeyTransRecipientInfo");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1SignerIdentifier, Rid, "rid");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, KeyEncryptionAlgorithm, "keyEncryptionAlgorithm");
    CA_ASN1_REQUIRED(CAsn1OctetString, EncryptedKey, "encryptedKey");
    CA_ASN1_END;
};

// OriginatorPublicKey ::= SEQUENCE {
//     algorithm  AlgorithmIdentifier,
//     publicKey  BIT STRING }     RFC 5652, 6.2.2
class CAsn1OriginatorPublicKey : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("OriginatorPublicKey");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, Algorithm, "algorithm");
    CA_ASN1_REQUIRED(CAsn1BitString, PublicKey, "publicKey");
    CA_ASN1_END;
};

// OriginatorIdentifierOrKey ::= CHOICE {
//     issuerAndSerialNumber  IssuerAndSerialNumber,
//     subjectKeyIdentifier   [0] SubjectKeyIdentifier,     -- OCTET STRING
//     originatorKey          [1] OriginatorPublicKey }     RFC 5652, 6.2.2
class CAsn1OriginatorIdentifierOrKey : public CAsn1TypedObject {
    CA_ASN1_CHOICE("OriginatorIdentifierOrKey");
    CA_ASN1_ALTERNATIVE(CAsn1IssuerAndSerialNumber, IssuerAndSerialNumber, "issuerAndSerialNumber");
    CA_ASN1_ALTERNATIVE_IMPLICIT(0, CAsn1OctetString, SubjectKeyIdentifier, "subjectKeyIdentifier");
    CA_ASN1_ALTERNATIVE_IMPLICIT(1, CAsn1OriginatorPublicKey, OriginatorKey, "originatorKey");
    CA_ASN1_END;
};

// RecipientKeyIdentifier ::= SEQUENCE {
//     subjectKeyIdentifier  SubjectKeyIdentifier,     -- OCTET STRING
//     date                  GeneralizedTime OPTIONAL,
//     other                 OtherKeyAttribute OPTIONAL }     RFC 5652, 6.2.2
class CAsn1RecipientKeyIdentifier : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("RecipientKeyIdentifier");
    CA_ASN1_REQUIRED(CAsn1OctetString, SubjectKeyIdentifier, "subjectKeyIdentifier");
    CA_ASN1_OPTIONAL(CAsn1GeneralizedTime, Date, "date");
    CA_ASN1_OPTIONAL(CAsn1OtherKeyAttribute, Other, "other");
    CA_ASN1_END;
};

// KeyAgreeRecipientIdentifier ::= CHOICE {
//     issuerAndSerialNumber  IssuerAndSerialNumber,
//     rKeyId                 [0] IMPLICIT RecipientKeyIdentifier }     RFC 5652, 6.2.2
class CAsn1KeyAgreeRecipientIdentifier : public CAsn1TypedObject {
    CA_ASN1_CHOICE("KeyAgreeRecipientIdentifier");
    CA_ASN1_ALTERNATIVE(CAsn1IssuerAndSerialNumber, IssuerAndSerialNumber, "issuerAndSerialNumber");
    CA_ASN1_ALTERNATIVE_IMPLICIT(0, CAsn1RecipientKeyIdentifier, RKeyId, "rKeyId");
    CA_ASN1_END;
};

// RecipientEncryptedKey ::= SEQUENCE {
//     rid           KeyAgreeRecipientIdentifier,
//     encryptedKey  EncryptedKey }   -- OCTET STRING     RFC 5652, 6.2.2
class CAsn1RecipientEncryptedKey : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("RecipientEncryptedKey");
    CA_ASN1_REQUIRED(CAsn1KeyAgreeRecipientIdentifier, Rid, "rid");
    CA_ASN1_REQUIRED(CAsn1OctetString, EncryptedKey, "encryptedKey");
    CA_ASN1_END;
};

// KeyAgreeRecipientInfo ::= SEQUENCE {
//     version                 CMSVersion,     -- INTEGER
//     originator              [0] EXPLICIT OriginatorIdentifierOrKey,
//     ukm                     [1] EXPLICIT UserKeyingMaterial OPTIONAL,     -- OCTET STRING
//     keyEncryptionAlgorithm  KeyEncryptionAlgorithmIdentifier,
//     recipientEncryptedKeys  SEQUENCE OF RecipientEncryptedKey }     RFC 5652, 6.2.2
class CAsn1KeyAgreeRecipientInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("KeyAgreeRecipientInfo");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED_EXPLICIT(0, CAsn1OriginatorIdentifierOrKey, Originator, "originator");
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1OctetString, Ukm, "ukm");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, KeyEncryptionAlgorithm, "keyEncryptionAlgorithm");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1RecipientEncryptedKey>, RecipientEncryptedKeys,
                     "recipientEncryptedKeys");
    CA_ASN1_END;
};

// KEKIdentifier ::= SEQUENCE {
//     keyIdentifier  OCTET STRING,
//     date           GeneralizedTime OPTIONAL,
//     other          OtherKeyAttribute OPTIONAL }     RFC 5652, 6.2.3
class CAsn1KekIdentifier : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("KEKIdentifier");
    CA_ASN1_REQUIRED(CAsn1OctetString, KeyIdentifier, "keyIdentifier");
    CA_ASN1_OPTIONAL(CAsn1GeneralizedTime, Date, "date");
    CA_ASN1_OPTIONAL(CAsn1OtherKeyAttribute, Other, "other");
    CA_ASN1_END;
};

// KEKRecipientInfo ::= SEQUENCE {
//     version                 CMSVersion,     -- INTEGER
//     kekid                   KEKIdentifier,
//     keyEncryptionAlgorithm  KeyEncryptionAlgorithmIdentifier,
//     encryptedKey            EncryptedKey }   -- OCTET STRING     RFC 5652, 6.2.3
class CAsn1KekRecipientInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("KEKRecipientInfo");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1KekIdentifier, KekId, "kekid");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, KeyEncryptionAlgorithm, "keyEncryptionAlgorithm");
    CA_ASN1_REQUIRED(CAsn1OctetString, EncryptedKey, "encryptedKey");
    CA_ASN1_END;
};

// PasswordRecipientInfo ::= SEQUENCE {
//     version                 CMSVersion,     -- INTEGER
//     keyDerivationAlgorithm  [0] KeyDerivationAlgorithmIdentifier OPTIONAL,
//     keyEncryptionAlgorithm  KeyEncryptionAlgorithmIdentifier,
//     encryptedKey            EncryptedKey }   -- OCTET STRING     RFC 5652, 6.2.4
class CAsn1PasswordRecipientInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("PasswordRecipientInfo");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1AlgorithmIdentifier, KeyDerivationAlgorithm,
                              "keyDerivationAlgorithm");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, KeyEncryptionAlgorithm, "keyEncryptionAlgorithm");
    CA_ASN1_REQUIRED(CAsn1OctetString, EncryptedKey, "encryptedKey");
    CA_ASN1_END;
};

// OtherRecipientInfo ::= SEQUENCE {
//     oriType   OBJECT IDENTIFIER,
//     oriValue  ANY DEFINED BY oriType }     RFC 5652, 6.2.5
class CAsn1OtherRecipientInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("OtherRecipientInfo");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, OriType, "oriType");
    CA_ASN1_REQUIRED(CAsn1Any, OriValue, "oriValue");
    CA_ASN1_END;
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
    CA_ASN1_SEQUENCE("KEMRecipientInfo");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1SignerIdentifier, Rid, "rid");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, Kem, "kem");
    CA_ASN1_REQUIRED(CAsn1OctetString, Kemct, "kemct");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, Kdf, "kdf");
    CA_ASN1_REQUIRED(CAsn1Integer, KekLength, "kekLength");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1OctetString, Ukm, "ukm");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, Wrap, "wrap");
    CA_ASN1_REQUIRED(CAsn1OctetString, EncryptedKey, "encryptedKey");
    CA_ASN1_END;
};

// KeyTransPSKRecipientInfo ::= SEQUENCE {     -- an oriValue
//     version                 CMSVersion,     -- INTEGER
//     pskid                   PreSharedKeyIdentifier,     -- OCTET STRING
//     kdfAlgorithm            KeyDerivationAlgorithmIdentifier,
//     keyEncryptionAlgorithm  KeyEncryptionAlgorithmIdentifier,
//     ktris                   SEQUENCE OF KeyTransRecipientInfo,
//     encryptedKey            EncryptedKey }   -- OCTET STRING     RFC 8696, 3
class CAsn1KeyTransPskRecipientInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("KeyTransPSKRecipientInfo");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1OctetString, PskId, "pskid");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, KdfAlgorithm, "kdfAlgorithm");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, KeyEncryptionAlgorithm, "keyEncryptionAlgorithm");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1KeyTransRecipientInfo>, Ktris, "ktris");
    CA_ASN1_REQUIRED(CAsn1OctetString, EncryptedKey, "encryptedKey");
    CA_ASN1_END;
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
    CA_ASN1_SEQUENCE("KeyAgreePSKRecipientInfo");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1OctetString, PskId, "pskid");
    CA_ASN1_REQUIRED_EXPLICIT(0, CAsn1OriginatorIdentifierOrKey, Originator, "originator");
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1OctetString, Ukm, "ukm");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, KdfAlgorithm, "kdfAlgorithm");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, KeyEncryptionAlgorithm, "keyEncryptionAlgorithm");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1RecipientEncryptedKey>, RecipientEncryptedKeys,
                     "recipientEncryptedKeys");
    CA_ASN1_END;
};

// RecipientInfo ::= CHOICE {
//     ktri   KeyTransRecipientInfo,
//     kari   [1] KeyAgreeRecipientInfo,
//     kekri  [2] KEKRecipientInfo,
//     pwri   [3] PasswordRecipientInfo,
//     ori    [4] OtherRecipientInfo }     RFC 5652, 6.2
class CAsn1RecipientInfo : public CAsn1TypedObject {
    CA_ASN1_CHOICE("RecipientInfo");
    CA_ASN1_ALTERNATIVE(CAsn1KeyTransRecipientInfo, Ktri, "ktri");
    CA_ASN1_ALTERNATIVE_IMPLICIT(1, CAsn1KeyAgreeRecipientInfo, Kari, "kari");
    CA_ASN1_ALTERNATIVE_IMPLICIT(2, CAsn1KekRecipientInfo, Kekri, "kekri");
    CA_ASN1_ALTERNATIVE_IMPLICIT(3, CAsn1PasswordRecipientInfo, Pwri, "pwri");
    CA_ASN1_ALTERNATIVE_IMPLICIT(4, CAsn1OtherRecipientInfo, Ori, "ori");
    CA_ASN1_END;
};
