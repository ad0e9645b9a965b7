#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/attributes/AttributeCertificate.h"

// The form of X.509 (1997), which old messages carry.

// CHOICE { baseCertificateID [0] EXPLICIT IssuerSerial,
//          subjectName       [1] EXPLICIT GeneralNames }     RFC 5652, 12.2
class CAsn1AttCertSubject : public CAsn1TypedObject {
    CA_ASN1_CHOICE("AttributeCertificateInfoV1.subject");
    CA_ASN1_ALTERNATIVE_EXPLICIT(0, CAsn1IssuerSerial, BaseCertificateId, "baseCertificateID");
    CA_ASN1_ALTERNATIVE_EXPLICIT(1, CAsn1GeneralNames, SubjectName, "subjectName");
    CA_ASN1_END;
};

// AttributeCertificateInfoV1 ::= SEQUENCE {
//     version                AttCertVersionV1 DEFAULT v1,     -- INTEGER
//     subject                CHOICE { ... },
//     issuer                 GeneralNames,
//     signature              AlgorithmIdentifier,
//     serialNumber           CertificateSerialNumber,     -- INTEGER
//     attCertValidityPeriod  AttCertValidityPeriod,
//     attributes             SEQUENCE OF Attribute,
//     issuerUniqueID         UniqueIdentifier OPTIONAL,     -- BIT STRING
//     extensions             Extensions OPTIONAL }     RFC 5652, 12.2
class CAsn1AttributeCertificateInfoV1 : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("AttributeCertificateInfoV1");
    CA_ASN1_OPTIONAL(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1AttCertSubject, Subject, "subject");
    CA_ASN1_REQUIRED(CAsn1GeneralNames, Issuer, "issuer");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, Signature, "signature");
    CA_ASN1_REQUIRED(CAsn1Integer, SerialNumber, "serialNumber");
    CA_ASN1_REQUIRED(CAsn1AttCertValidityPeriod, AttCertValidityPeriod, "attCertValidityPeriod");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1Attribute>, Attributes, "attributes");
    CA_ASN1_OPTIONAL(CAsn1BitString, IssuerUniqueId, "issuerUniqueID");
    CA_ASN1_OPTIONAL(CAsn1Extensions, Extensions, "extensions");
    CA_ASN1_END;
};

// AttributeCertificateV1 ::= SEQUENCE {
//     acInfo              AttributeCertificateInfoV1,
//     signatureAlgorithm  AlgorithmIdentifier,
//     signature           BIT STRING }     RFC 5652, 12.2
class CAsn1AttributeCertificateV1 : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("AttributeCertificateV1");
    CA_ASN1_REQUIRED(CAsn1AttributeCertificateInfoV1, AcInfo, "acInfo");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, SignatureAlgorithm, "signatureAlgorithm");
    CA_ASN1_REQUIRED(CAsn1BitString, Signature, "signature");
    CA_ASN1_END;
};
