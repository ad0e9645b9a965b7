#pragma once

#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/GeneralName.h"

// IssuerSerial ::= SEQUENCE {
//     issuer     GeneralNames,
//     serial     CertificateSerialNumber,        -- INTEGER
//     issuerUID  UniqueIdentifier OPTIONAL }     -- BIT STRING     RFC 5755, 4.1
class CAsn1IssuerSerial : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "IssuerSerial";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1GeneralNames* Issuer() const { return m_issuer; }
    CAsn1Integer* Serial() const { return m_serial; }
    CAsn1BitString* IssuerUid() const { return m_issuerUid; }

  private:
    CAsn1GeneralNames* m_issuer = nullptr;
    CAsn1Integer* m_serial = nullptr;
    CAsn1BitString* m_issuerUid = nullptr;
};

// ObjectDigestInfo ::= SEQUENCE {
//     digestedObjectType  ENUMERATED { publicKey (0), publicKeyCert (1), otherObjectTypes (2) },
//     otherObjectTypeID   OBJECT IDENTIFIER OPTIONAL,
//     digestAlgorithm     AlgorithmIdentifier,
//     objectDigest        BIT STRING }     RFC 5755, 4.1
class CAsn1ObjectDigestInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ObjectDigestInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Any* DigestedObjectType() const { return m_digestedObjectType; }
    CAsn1ObjectIdentifier* OtherObjectTypeId() const { return m_otherObjectTypeId; }
    CAsn1AlgorithmIdentifier* DigestAlgorithm() const { return m_digestAlgorithm; }
    CAsn1BitString* ObjectDigest() const { return m_objectDigest; }

  private:
    CAsn1Any* m_digestedObjectType = nullptr;
    CAsn1ObjectIdentifier* m_otherObjectTypeId = nullptr;
    CAsn1AlgorithmIdentifier* m_digestAlgorithm = nullptr;
    CAsn1BitString* m_objectDigest = nullptr;
};

// Holder ::= SEQUENCE {
//     baseCertificateID  [0] IssuerSerial OPTIONAL,
//     entityName         [1] GeneralNames OPTIONAL,
//     objectDigestInfo   [2] ObjectDigestInfo OPTIONAL }     RFC 5755, 4.1
class CAsn1Holder : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Holder";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1IssuerSerial* BaseCertificateId() const { return m_baseCertificateId; }
    CAsn1GeneralNames* EntityName() const { return m_entityName; }
    CAsn1ObjectDigestInfo* ObjectDigestInfo() const { return m_objectDigestInfo; }

  private:
    CAsn1IssuerSerial* m_baseCertificateId = nullptr;
    CAsn1GeneralNames* m_entityName = nullptr;
    CAsn1ObjectDigestInfo* m_objectDigestInfo = nullptr;
};
