#pragma once

#include "asn1/Asn1Primitives.h"
#include "asn1/cms/ContentInfo.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// CompressedData ::= SEQUENCE {
//     version               CMSVersion,     -- INTEGER
//     compressionAlgorithm  CompressionAlgorithmIdentifier,
//     encapContentInfo      EncapsulatedContentInfo }     RFC 3274, 1.1
class CAsn1CompressedData : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "CompressedData";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Version() const { return m_version; }
    const CAsn1AlgorithmIdentifier* CompressionAlgorithm() const { return m_compressionAlgorithm; }
    const CAsn1EncapsulatedContentInfo* EncapContentInfo() const { return m_encapContentInfo; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1AlgorithmIdentifier* m_compressionAlgorithm = nullptr;
    CAsn1EncapsulatedContentInfo* m_encapContentInfo = nullptr;
};
