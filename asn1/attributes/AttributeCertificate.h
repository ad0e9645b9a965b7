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

class CFieldReader;

// What stands behind the issuer, in both versions:
//     signature              AlgorithmIdentifier,
//     serialNumber           CertificateSerialNumber,     -- INTEGER
//     attCertValidityPeriod  AttCertValidityPeriod,
//     attributes             SEQUENCE OF Attribute,
//     issuerUniqueID         UniqueIdentifier OPTIONAL,     -- BIT STRING
//     extensions             Extensions OPTIONAL     RFC 5755, 4.1; RFC 5652, 12.2
class CAsn1AttributeCertificateFacts : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;

    CAsn1AlgorithmIdentifier* Signature() const { return m_signature; }
    CAsn1Integer* SerialNumber() const { return m_serialNumber; }
    CAsn1AttCertValidityPeriod* AttCertValidityPeriod() const { return m_attCertValidityPeriod; }
    CAsn1SequenceOf<CAsn1Attribute>* Attributes() const { return m_attributes; }
    CAsn1BitString* IssuerUniqueId() const { return m_issuerUniqueId; }
    CAsn1Extensions* Extensions() const { return m_extensions; }

  protected:
    void DecodeFacts(CFieldReader& fields);

  private:
    CAsn1AlgorithmIdentifier* m_signature = nullptr;
    CAsn1Integer* m_serialNumber = nullptr;
    CAsn1AttCertValidityPeriod* m_attCertValidityPeriod = nullptr;
    CAsn1SequenceOf<CAsn1Attribute>* m_attributes = nullptr;
    CAsn1BitString* m_issuerUniqueId = nullptr;
    CAsn1Extensions* m_extensions = nullptr;
};

// AttributeCertificateInfo ::= SEQUENCE {
//     version                AttCertVersion,     -- INTEGER, v2 (1)
//     holder                 Holder,
//     issuer                 AttCertIssuer,
//     ... }     -- what both versions have     RFC 5755, 4.1
class CAsn1AttributeCertificateInfo : public CAsn1AttributeCertificateFacts {
  public:
    using CAsn1AttributeCertificateFacts::CAsn1AttributeCertificateFacts;
    static constexpr const char* kName = "AttributeCertificateInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Version() const { return m_version; }
    CAsn1Holder* Holder() const { return m_holder; }
    CAsn1AttCertIssuer* Issuer() const { return m_issuer; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1Holder* m_holder = nullptr;
    CAsn1AttCertIssuer* m_issuer = nullptr;
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
