#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/cms/ContentInfo.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// CompressedData ::= SEQUENCE {
//     version               CMSVersion,     -- INTEGER
//     compressionAlgorithm  CompressionAlgorithmIdentifier,
//     encapContentInfo      EncapsulatedContentInfo }     RFC 3274, 1.1
class CAsn1CompressedData : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("CompressedData");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, CompressionAlgorithm, "compressionAlgorithm");
    CA_ASN1_REQUIRED(CAsn1EncapsulatedContentInfo, EncapContentInfo, "encapContentInfo");
    CA_ASN1_END;
};
