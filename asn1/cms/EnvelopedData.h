#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/cms/ContentInfo.h"
#include "asn1/cms/RecipientInfo.h"
#include "asn1/cms/SignerInfo.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/Attribute.h"

// OriginatorInfo ::= SEQUENCE {
//     certs  [0] IMPLICIT SET OF CertificateChoices OPTIONAL,
//     crls   [1] IMPLICIT SET OF RevocationInfoChoice OPTIONAL }     RFC 5652, 6.1
class CAsn1OriginatorInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("OriginatorInfo");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1SetOf<CAsn1Any>, Certs, "certs");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1SetOf<CAsn1Any>, Crls, "crls");
    CA_ASN1_END;
};

// EncryptedContentInfo ::= SEQUENCE {
//     contentType                 ContentType,     -- OBJECT IDENTIFIER
//     contentEncryptionAlgorithm  ContentEncryptionAlgorithmIdentifier,
//     encryptedContent            [0] IMPLICIT OCTET STRING OPTIONAL }     RFC 5652, 6.1
class CAsn1EncryptedContentInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("EncryptedContentInfo");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, ContentType, "contentType");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, ContentEncryptionAlgorithm,
                     "contentEncryptionAlgorithm");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1OctetString, EncryptedContent, "encryptedContent");
    CA_ASN1_END;
};

// EnvelopedData ::= SEQUENCE {
//     version               CMSVersion,     -- INTEGER
//     originatorInfo        [0] IMPLICIT OriginatorInfo OPTIONAL,
//     recipientInfos        SET OF RecipientInfo,
//     encryptedContentInfo  EncryptedContentInfo,
//     unprotectedAttrs      [1] IMPLICIT SET OF Attribute OPTIONAL }     RFC 5652, 6.1
class CAsn1EnvelopedData : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("EnvelopedData");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1OriginatorInfo, OriginatorInfo, "originatorInfo");
    CA_ASN1_REQUIRED(CAsn1SetOf<CAsn1RecipientInfo>, RecipientInfos, "recipientInfos");
    CA_ASN1_REQUIRED(CAsn1EncryptedContentInfo, EncryptedContentInfo, "encryptedContentInfo");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1SetOf<CAsn1Attribute>, UnprotectedAttrs, "unprotectedAttrs");
    CA_ASN1_END;
};

// AuthEnvelopedData ::= SEQUENCE {
//     version                   CMSVersion,     -- INTEGER
//     originatorInfo            [0] IMPLICIT OriginatorInfo OPTIONAL,
//     recipientInfos            SET OF RecipientInfo,
//     authEncryptedContentInfo  EncryptedContentInfo,
//     authAttrs                 [1] IMPLICIT SET OF Attribute OPTIONAL,
//     mac                       MessageAuthenticationCode,     -- OCTET STRING
//     unauthAttrs               [2] IMPLICIT SET OF Attribute OPTIONAL }     RFC 5083, 2.1
class CAsn1AuthEnvelopedData : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("AuthEnvelopedData");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1OriginatorInfo, OriginatorInfo, "originatorInfo");
    CA_ASN1_REQUIRED(CAsn1SetOf<CAsn1RecipientInfo>, RecipientInfos, "recipientInfos");
    CA_ASN1_REQUIRED(CAsn1EncryptedContentInfo, AuthEncryptedContentInfo,
                     "authEncryptedContentInfo");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1SetOf<CAsn1Attribute>, AuthAttrs, "authAttrs");
    CA_ASN1_REQUIRED(CAsn1OctetString, Mac, "mac");
    CA_ASN1_OPTIONAL_IMPLICIT(2, CAsn1SetOf<CAsn1Attribute>, UnauthAttrs, "unauthAttrs");
    CA_ASN1_END;
};

// AuthenticatedData ::= SEQUENCE {
//     version           CMSVersion,     -- INTEGER
//     originatorInfo    [0] IMPLICIT OriginatorInfo OPTIONAL,
//     recipientInfos    SET OF RecipientInfo,
//     macAlgorithm      MessageAuthenticationCodeAlgorithm,
//     digestAlgorithm   [1] DigestAlgorithmIdentifier OPTIONAL,
//     encapContentInfo  EncapsulatedContentInfo,
//     authAttrs         [2] IMPLICIT SET OF Attribute OPTIONAL,
//     mac               MessageAuthenticationCode,     -- OCTET STRING
//     unauthAttrs       [3] IMPLICIT SET OF Attribute OPTIONAL }     RFC 5652, 9.1
class CAsn1AuthenticatedData : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("AuthenticatedData");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1OriginatorInfo, OriginatorInfo, "originatorInfo");
    CA_ASN1_REQUIRED(CAsn1SetOf<CAsn1RecipientInfo>, RecipientInfos, "recipientInfos");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, MacAlgorithm, "macAlgorithm");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1AlgorithmIdentifier, DigestAlgorithm, "digestAlgorithm");
    CA_ASN1_REQUIRED(CAsn1EncapsulatedContentInfo, EncapContentInfo, "encapContentInfo");
    CA_ASN1_OPTIONAL_IMPLICIT(2, CAsn1SetOf<CAsn1Attribute>, AuthAttrs, "authAttrs");
    CA_ASN1_REQUIRED(CAsn1OctetString, Mac, "mac");
    CA_ASN1_OPTIONAL_IMPLICIT(3, CAsn1SetOf<CAsn1Attribute>, UnauthAttrs, "unauthAttrs");
    CA_ASN1_END;
};

// SignedAndEnvelopedData ::= SEQUENCE {
//     version               Version,     -- INTEGER
//     recipientInfos        SET OF RecipientInfo,
//     digestAlgorithms      SET OF DigestAlgorithmIdentifier,
//     encryptedContentInfo  EncryptedContentInfo,
//     certificates          [0] IMPLICIT SET OF CertificateChoices OPTIONAL,
//     crls                  [1] IMPLICIT SET OF RevocationInfoChoice OPTIONAL,
//     signerInfos           SET OF SignerInfo }     RFC 2315, 11.1
class CAsn1SignedAndEnvelopedData : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("SignedAndEnvelopedData");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1SetOf<CAsn1RecipientInfo>, RecipientInfos, "recipientInfos");
    CA_ASN1_REQUIRED(CAsn1SetOf<CAsn1AlgorithmIdentifier>, DigestAlgorithms, "digestAlgorithms");
    CA_ASN1_REQUIRED(CAsn1EncryptedContentInfo, EncryptedContentInfo, "encryptedContentInfo");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1SetOf<CAsn1Any>, Certificates, "certificates");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1SetOf<CAsn1Any>, Crls, "crls");
    CA_ASN1_REQUIRED(CAsn1SetOf<CAsn1SignerInfo>, SignerInfos, "signerInfos");
    CA_ASN1_END;
};
