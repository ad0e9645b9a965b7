#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/cms/ContentInfo.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// Evidence that data existed, renewed as its algorithms age (RFC 4998). Tags are implicit.

// ArchiveTimeStamp ::= SEQUENCE {
//     digestAlgorithm  [0] AlgorithmIdentifier OPTIONAL,
//     attributes       [1] Attributes OPTIONAL,     -- SET OF Attribute
//     reducedHashtree  [2] SEQUENCE OF PartialHashtree OPTIONAL,     -- SEQUENCE OF OCTET STRING
//     timeStamp        ContentInfo }     RFC 4998, 4.1
class CAsn1ArchiveTimeStamp : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ArchiveTimeStamp";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    /// Null for the one of the time stamp.
    const CAsn1AlgorithmIdentifier* DigestAlgorithm() const { return m_digestAlgorithm; }
    const CAsn1SetOf<CAsn1Any>* Attributes() const { return m_attributes; }
    const CAsn1SequenceOf<CAsn1SequenceOf<CAsn1OctetString>>* ReducedHashtree() const {
        return m_reducedHashtree;
    }
    const CAsn1ContentInfo* TimeStamp() const { return m_timeStamp; }

  private:
    CAsn1AlgorithmIdentifier* m_digestAlgorithm = nullptr;
    CAsn1SetOf<CAsn1Any>* m_attributes = nullptr;
    CAsn1SequenceOf<CAsn1SequenceOf<CAsn1OctetString>>* m_reducedHashtree = nullptr;
    CAsn1ContentInfo* m_timeStamp = nullptr;
};

// EvidenceRecord ::= SEQUENCE {
//     version                   INTEGER,
//     digestAlgorithms          SEQUENCE OF AlgorithmIdentifier,
//     cryptoInfos               [0] CryptoInfos OPTIONAL,     -- SEQUENCE OF Attribute
//     encryptionInfo            [1] EncryptionInfo OPTIONAL,     -- SEQUENCE
//     archiveTimeStampSequence  SEQUENCE OF ArchiveTimeStampChain }   -- SEQUENCE OF
//     ArchiveTimeStamp
// RFC 4998, 3.1
class CAsn1EvidenceRecord : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "EvidenceRecord";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Version() const { return m_version; }
    const CAsn1SequenceOf<CAsn1AlgorithmIdentifier>* DigestAlgorithms() const {
        return m_digestAlgorithms;
    }
    const CAsn1SequenceOf<CAsn1Any>* CryptoInfos() const { return m_cryptoInfos; }
    const CAsn1SequenceOf<CAsn1Any>* EncryptionInfo() const { return m_encryptionInfo; }
    const CAsn1SequenceOf<CAsn1SequenceOf<CAsn1ArchiveTimeStamp>>* ArchiveTimeStampSequence()
        const {
        return m_archiveTimeStampSequence;
    }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1SequenceOf<CAsn1AlgorithmIdentifier>* m_digestAlgorithms = nullptr;
    CAsn1SequenceOf<CAsn1Any>* m_cryptoInfos = nullptr;
    CAsn1SequenceOf<CAsn1Any>* m_encryptionInfo = nullptr;
    CAsn1SequenceOf<CAsn1SequenceOf<CAsn1ArchiveTimeStamp>>* m_archiveTimeStampSequence = nullptr;
};
