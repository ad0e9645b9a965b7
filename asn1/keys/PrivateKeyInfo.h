#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/Attribute.h"

// OneAsymmetricKey ::= SEQUENCE {
//     version              INTEGER,
//     privateKeyAlgorithm  AlgorithmIdentifier,
//     privateKey           OCTET STRING,
//     attributes           [0] IMPLICIT SET OF Attribute OPTIONAL,
//     publicKey            [1] IMPLICIT BIT STRING OPTIONAL }     RFC 5958, 2
// PrivateKeyInfo (RFC 5208, 5) is the same without the last one.
class CAsn1PrivateKeyInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("OneAsymmetricKey");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, PrivateKeyAlgorithm, "privateKeyAlgorithm");
    /// Secret; what it is of is said by the algorithm.
    CA_ASN1_REQUIRED(CAsn1OctetString, PrivateKey, "privateKey");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1SetOf<CAsn1Attribute>, Attributes, "attributes");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1BitString, PublicKey, "publicKey");
    CA_ASN1_END;
};

// EncryptedPrivateKeyInfo ::= SEQUENCE {
//     encryptionAlgorithm  AlgorithmIdentifier,
//     encryptedData        OCTET STRING }     RFC 5958, 3
class CAsn1EncryptedPrivateKeyInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("EncryptedPrivateKeyInfo");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, EncryptionAlgorithm, "encryptionAlgorithm");
    CA_ASN1_REQUIRED(CAsn1OctetString, EncryptedData, "encryptedData");
    CA_ASN1_END;
};
