#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/cms/RecipientInfo.h"
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
