#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Time.h"
#include "asn1/attributes/AttCertIssuer.h"
#include "asn1/x509/Attribute.h"
#include "asn1/x509/Extension.h"

// AttCertValidityPeriod ::= SEQUENCE {
//     notBeforeTime  GeneralizedTime,
//     notAfterTime   GeneralizedTime }     RFC 5755, 4.1
// Not decoded, as the times of Validity; a UTCTime, which some issuers write, is taken too.
class CAsn1AttCertValidityPeriod : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("AttCertValidityPeriod");
    CA_ASN1_REQUIRED(CAsn1Time, NotBeforeTime, "notBeforeTime");
    CA_ASN1_REQUIRED(CAsn1Time, NotAfterTime, "notAfterTime");
    CA_ASN1_END;
};

// AttributeCertificateInfo ::= SEQUENCE {
//     version                AttCertVersion,     -- INTEGER, v2 (1)
//     holder                 Holder,
//     issuer                 AttCertIssuer,
//     signature              AlgorithmIdentifier,
//     serialNumber           CertificateSerialNumber,     -- INTEGER
//     attCertValidityPeriod  AttCertValidityPeriod,
//     attributes             SEQUENCE OF Attribute,
//     issuerUniqueID         UniqueIdentifier OPTIONAL,     -- BIT STRING
//     extensions             Extensions OPTIONAL }     RFC 5755, 4.1
class CAsn1AttributeCertificateInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("AttributeCertificateInfo");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1Holder, Holder, "holder");
    CA_ASN1_REQUIRED(CAsn1AttCertIssuer, Issuer, "issuer");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, Signature, "signature");
    CA_ASN1_REQUIRED(CAsn1Integer, SerialNumber, "serialNumber");
    CA_ASN1_REQUIRED(CAsn1AttCertValidityPeriod, AttCertValidityPeriod, "attCertValidityPeriod");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1Attribute>, Attributes, "attributes");
    CA_ASN1_OPTIONAL(CAsn1BitString, IssuerUniqueId, "issuerUniqueID");
    CA_ASN1_OPTIONAL(CAsn1Extensions, Extensions, "extensions");
    CA_ASN1_END;
};

// AttributeCertificate ::= SEQUENCE {
//     acinfo              AttributeCertificateInfo,   -- what is signed: its Raw()
//     signatureAlgorithm  AlgorithmIdentifier,
//     signatureValue      BIT STRING }     RFC 5755, 4.1
class CAsn1AttributeCertificate : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("AttributeCertificate");
    CA_ASN1_REQUIRED(CAsn1AttributeCertificateInfo, AcInfo, "acinfo");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, SignatureAlgorithm, "signatureAlgorithm");
    CA_ASN1_REQUIRED(CAsn1BitString, SignatureValue, "signatureValue");
    CA_ASN1_END;
};
