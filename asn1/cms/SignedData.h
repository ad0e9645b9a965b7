#pragma once

#include "asn1/Asn1List.h"
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
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "SignedData";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    CAsn1Integer* Version() const { return m_version; }
    CAsn1SetOf<CAsn1AlgorithmIdentifier>* DigestAlgorithms() const { return m_digestAlgorithms; }
    CAsn1EncapsulatedContentInfo* EncapContentInfo() const { return m_encapContentInfo; }
    CAsn1SetOf<CAsn1Any>* Certificates() const { return m_certificates; }
    CAsn1SetOf<CAsn1Any>* Crls() const { return m_crls; }
    CAsn1SetOf<CAsn1SignerInfo>* SignerInfos() const { return m_signerInfos; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1SetOf<CAsn1AlgorithmIdentifier>* m_digestAlgorithms = nullptr;
    CAsn1EncapsulatedContentInfo* m_encapContentInfo = nullptr;
    CAsn1SetOf<CAsn1Any>* m_certificates = nullptr;
    CAsn1SetOf<CAsn1Any>* m_crls = nullptr;
    CAsn1SetOf<CAsn1SignerInfo>* m_signerInfos = nullptr;
};
