#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/cms/ContentInfo.h"
#include "asn1/cms/SignerInfo.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// SignedData ::= SEQUENCE {
//     version           CMSVersion,     -- INTEGER
//     digestAlgorithms  SET OF DigestAlgorithmIdentifier,
//     encapContentInfo  EncapsulatedContentInfo,
//     certificates      [0] IMPLICIT SET OF CertificateChoices OPTIONAL,
//     crls              [1] IMPLICIT SET OF RevocationInfoChoice OPTIONAL,
//     signerInfos       SET OF SignerInfo }     RFC 5652, 5.1; RFC 2315, 9.1
class CAsn1SignedData : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("SignedData");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1SetOf<CAsn1AlgorithmIdentifier>, DigestAlgorithms, "digestAlgorithms");
    CA_ASN1_REQUIRED(CAsn1EncapsulatedContentInfo, EncapContentInfo, "encapContentInfo");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1SetOf<CAsn1Any>, Certificates, "certificates");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1SetOf<CAsn1Any>, Crls, "crls");
    CA_ASN1_REQUIRED(CAsn1SetOf<CAsn1SignerInfo>, SignerInfos, "signerInfos");
    CA_ASN1_END;
};
