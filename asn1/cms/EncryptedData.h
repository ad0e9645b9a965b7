#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/cms/ContentInfo.h"
#include "asn1/cms/EnvelopedData.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/Attribute.h"

// EncryptedData ::= SEQUENCE {
//     version               CMSVersion,     -- INTEGER
//     encryptedContentInfo  EncryptedContentInfo,
//     unprotectedAttrs      [1] IMPLICIT SET OF Attribute OPTIONAL }     RFC 5652, 8
class CAsn1EncryptedData : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("EncryptedData");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1EncryptedContentInfo, EncryptedContentInfo, "encryptedContentInfo");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1SetOf<CAsn1Attribute>, UnprotectedAttrs, "unprotectedAttrs");
    CA_ASN1_END;
};

// DigestedData ::= SEQUENCE {
//     version           CMSVersion,     -- INTEGER
//     digestAlgorithm   DigestAlgorithmIdentifier,
//     encapContentInfo  EncapsulatedContentInfo,
//     digest            Digest }   -- OCTET STRING     RFC 5652, 7
class CAsn1DigestedData : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("DigestedData");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, DigestAlgorithm, "digestAlgorithm");
    CA_ASN1_REQUIRED(CAsn1EncapsulatedContentInfo, EncapContentInfo, "encapContentInfo");
    CA_ASN1_REQUIRED(CAsn1OctetString, Digest, "digest");
    CA_ASN1_END;
};
