#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// HashAlgAndValue ::= SEQUENCE {
//     hashAlg    AlgorithmIdentifier,
//     hashValue  OCTET STRING }     RFC 9399, 4.1
class CAsn1HashAlgAndValue : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("HashAlgAndValue");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, HashAlg, "hashAlg");
    CA_ASN1_REQUIRED(CAsn1OctetString, HashValue, "hashValue");
    CA_ASN1_END;
};

// LogotypeDetails ::= SEQUENCE {
//     mediaType     IA5String,
//     logotypeHash  SEQUENCE OF HashAlgAndValue,
//     logotypeURI   SEQUENCE OF IA5String }     RFC 9399, 4.1
class CAsn1LogotypeDetails : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("LogotypeDetails");
    CA_ASN1_REQUIRED(CAsn1IA5String, MediaType, "mediaType");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1HashAlgAndValue>, LogotypeHash, "logotypeHash");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1IA5String>, LogotypeURI, "logotypeURI");
    CA_ASN1_END;
};

// LogotypeImage ::= SEQUENCE {
//     imageDetails  LogotypeDetails,
//     imageInfo     LogotypeImageInfo OPTIONAL }
// LogotypeAudio ::= SEQUENCE {
//     audioDetails  LogotypeDetails,
//     audioInfo     LogotypeAudioInfo OPTIONAL }     RFC 9399, 4.1
// One class for both: they differ in the second member, which says sizes.
class CAsn1LogotypeMedia : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("LogotypeMedia");
    CA_ASN1_REQUIRED(CAsn1LogotypeDetails, Details, "details");
    CA_ASN1_OPTIONAL(CAsn1Any, Info, "info");
    CA_ASN1_END;
};

// LogotypeData ::= SEQUENCE {
//     image  SEQUENCE OF LogotypeImage OPTIONAL,
//     audio  [1] SEQUENCE OF LogotypeAudio OPTIONAL }     RFC 9399, 4.1
class CAsn1LogotypeData : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("LogotypeData");
    CA_ASN1_OPTIONAL(CAsn1SequenceOf<CAsn1LogotypeMedia>, Image, "image");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1SequenceOf<CAsn1LogotypeMedia>, Audio, "audio");
    CA_ASN1_END;
};

// LogotypeReference ::= SEQUENCE {
//     refStructHash  SEQUENCE OF HashAlgAndValue,
//     refStructURI   SEQUENCE OF IA5String }     RFC 9399, 4.1
class CAsn1LogotypeReference : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("LogotypeReference");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1HashAlgAndValue>, RefStructHash, "refStructHash");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1IA5String>, RefStructURI, "refStructURI");
    CA_ASN1_END;
};

// LogotypeInfo ::= CHOICE {
//     direct    [0] LogotypeData,
//     indirect  [1] LogotypeReference }     RFC 9399, 4.1
class CAsn1LogotypeInfo : public CAsn1TypedObject {
    CA_ASN1_CHOICE("LogotypeInfo");
    CA_ASN1_ALTERNATIVE_IMPLICIT(0, CAsn1LogotypeData, Direct, "direct");
    CA_ASN1_ALTERNATIVE_IMPLICIT(1, CAsn1LogotypeReference, Indirect, "indirect");
    CA_ASN1_END;
};

// OtherLogotypeInfo ::= SEQUENCE {
//     logotypeType  OBJECT IDENTIFIER,
//     info          LogotypeInfo }     RFC 9399, 4.1
class CAsn1OtherLogotypeInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("OtherLogotypeInfo");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, LogotypeType, "logotypeType");
    CA_ASN1_REQUIRED(CAsn1LogotypeInfo, Info, "info");
    CA_ASN1_END;
};

// LogotypeExtn ::= SEQUENCE {
//     communityLogos  [0] EXPLICIT SEQUENCE OF LogotypeInfo OPTIONAL,
//     issuerLogo      [1] EXPLICIT LogotypeInfo OPTIONAL,
//     subjectLogo     [2] EXPLICIT LogotypeInfo OPTIONAL,
//     otherLogos      [3] EXPLICIT SEQUENCE OF OtherLogotypeInfo OPTIONAL }     RFC 9399, 4.1
class CAsn1LogotypeExtn : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("LogotypeExtn");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1SequenceOf<CAsn1LogotypeInfo>, CommunityLogos,
                              "communityLogos");
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1LogotypeInfo, IssuerLogo, "issuerLogo");
    CA_ASN1_OPTIONAL_EXPLICIT(2, CAsn1LogotypeInfo, SubjectLogo, "subjectLogo");
    CA_ASN1_OPTIONAL_EXPLICIT(3, CAsn1SequenceOf<CAsn1OtherLogotypeInfo>, OtherLogos, "otherLogos");
    CA_ASN1_END;
};
