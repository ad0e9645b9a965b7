#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/GeneralName.h"

// IssuerSerial ::= SEQUENCE {
//     issuer     GeneralNames,
//     serial     CertificateSerialNumber,        -- INTEGER
//     issuerUID  UniqueIdentifier OPTIONAL }     -- BIT STRING     RFC 5755, 4.1
class CAsn1IssuerSerial : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("IssuerSerial");
    CA_ASN1_REQUIRED(CAsn1GeneralNames, Issuer, "issuer");
    CA_ASN1_REQUIRED(CAsn1Integer, Serial, "serial");
    CA_ASN1_OPTIONAL(CAsn1BitString, IssuerUid, "issuerUID");
    CA_ASN1_END;
};

// ObjectDigestInfo ::= SEQUENCE {
//     digestedObjectType  ENUMERATED { publicKey (0), publicKeyCert (1), otherObjectTypes (2) },
//     otherObjectTypeID   OBJECT IDENTIFIER OPTIONAL,
//     digestAlgorithm     AlgorithmIdentifier,
//     objectDigest        BIT STRING }     RFC 5755, 4.1
class CAsn1ObjectDigestInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ObjectDigestInfo");
    CA_ASN1_REQUIRED(CAsn1Any, DigestedObjectType, "digestedObjectType");
    CA_ASN1_OPTIONAL(CAsn1ObjectIdentifier, OtherObjectTypeId, "otherObjectTypeID");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, DigestAlgorithm, "digestAlgorithm");
    CA_ASN1_REQUIRED(CAsn1BitString, ObjectDigest, "objectDigest");
    CA_ASN1_END;
};

// Holder ::= SEQUENCE {
//     baseCertificateID  [0] IssuerSerial OPTIONAL,
//     entityName         [1] GeneralNames OPTIONAL,
//     objectDigestInfo   [2] ObjectDigestInfo OPTIONAL }     RFC 5755, 4.1
class CAsn1Holder : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("Holder");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1IssuerSerial, BaseCertificateId, "baseCertificateID");
    CA_ASN1_OPTIONAL_IMPLICIT(1, CAsn1GeneralNames, EntityName, "entityName");
    CA_ASN1_OPTIONAL_IMPLICIT(2, CAsn1ObjectDigestInfo, ObjectDigestInfo, "objectDigestInfo");
    CA_ASN1_END;
};
