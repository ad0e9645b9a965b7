#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"
#include "asn1/x509/AlgorithmIdentifier.h"

// HashAlgAndValue ::= SEQUENCE {
//     hashAlg    AlgorithmIdentifier,
//     hashValue  OCTET STRING }     RFC 9399, 4.1
class CAsn1HashAlgAndValue : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "HashAlgAndValue";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1AlgorithmIdentifier* HashAlg() const { return m_hashAlg; }
    const CAsn1OctetString* HashValue() const { return m_hashValue; }

  private:
    CAsn1AlgorithmIdentifier* m_hashAlg = nullptr;
    CAsn1OctetString* m_hashValue = nullptr;
};

// LogotypeDetails ::= SEQUENCE {
//     mediaType     IA5String,
//     logotypeHash  SEQUENCE OF HashAlgAndValue,
//     logotypeURI   SEQUENCE OF IA5String }     RFC 9399, 4.1
class CAsn1LogotypeDetails : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "LogotypeDetails";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1IA5String* MediaType() const { return m_mediaType; }
    const CAsn1SequenceOf<CAsn1HashAlgAndValue>* LogotypeHash() const { return m_logotypeHash; }
    const CAsn1SequenceOf<CAsn1IA5String>* LogotypeURI() const { return m_logotypeURI; }

  private:
    CAsn1IA5String* m_mediaType = nullptr;
    CAsn1SequenceOf<CAsn1HashAlgAndValue>* m_logotypeHash = nullptr;
    CAsn1SequenceOf<CAsn1IA5String>* m_logotypeURI = nullptr;
};

// LogotypeImage ::= SEQUENCE {
//     imageDetails  LogotypeDetails,
//     imageInfo     LogotypeImageInfo OPTIONAL }
// LogotypeAudio ::= SEQUENCE {
//     audioDetails  LogotypeDetails,
//     audioInfo     LogotypeAudioInfo OPTIONAL }     RFC 9399, 4.1
// One class for both: they differ in the second member, which says sizes.
class CAsn1LogotypeMedia : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "LogotypeMedia";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1LogotypeDetails* Details() const { return m_details; }
    const CAsn1Any* Info() const { return m_info; }

  private:
    CAsn1LogotypeDetails* m_details = nullptr;
    CAsn1Any* m_info = nullptr;
};

// LogotypeData ::= SEQUENCE {
//     image  SEQUENCE OF LogotypeImage OPTIONAL,
//     audio  [1] SEQUENCE OF LogotypeAudio OPTIONAL }     RFC 9399, 4.1
class CAsn1LogotypeData : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "LogotypeData";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1SequenceOf<CAsn1LogotypeMedia>* Image() const { return m_image; }
    const CAsn1SequenceOf<CAsn1LogotypeMedia>* Audio() const { return m_audio; }

  private:
    CAsn1SequenceOf<CAsn1LogotypeMedia>* m_image = nullptr;
    CAsn1SequenceOf<CAsn1LogotypeMedia>* m_audio = nullptr;
};

// LogotypeReference ::= SEQUENCE {
//     refStructHash  SEQUENCE OF HashAlgAndValue,
//     refStructURI   SEQUENCE OF IA5String }     RFC 9399, 4.1
class CAsn1LogotypeReference : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "LogotypeReference";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1SequenceOf<CAsn1HashAlgAndValue>* RefStructHash() const { return m_refStructHash; }
    const CAsn1SequenceOf<CAsn1IA5String>* RefStructURI() const { return m_refStructURI; }

  private:
    CAsn1SequenceOf<CAsn1HashAlgAndValue>* m_refStructHash = nullptr;
    CAsn1SequenceOf<CAsn1IA5String>* m_refStructURI = nullptr;
};

// LogotypeInfo ::= CHOICE {
//     direct    [0] LogotypeData,
//     indirect  [1] LogotypeReference }     RFC 9399, 4.1
class CAsn1LogotypeInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "LogotypeInfo";
    static bool Accepts(unsigned char tag) {
        return tag == (kAsn1ContextBit | kAsn1ConstructedBit) ||
               tag == (kAsn1ContextBit | kAsn1ConstructedBit | 1);
    }

    void Decode() override;

    const CAsn1LogotypeData* Direct() const { return m_direct; }
    const CAsn1LogotypeReference* Indirect() const { return m_indirect; }

  private:
    CAsn1LogotypeData* m_direct = nullptr;
    CAsn1LogotypeReference* m_indirect = nullptr;
};

// OtherLogotypeInfo ::= SEQUENCE {
//     logotypeType  OBJECT IDENTIFIER,
//     info          LogotypeInfo }     RFC 9399, 4.1
class CAsn1OtherLogotypeInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "OtherLogotypeInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ObjectIdentifier* LogotypeType() const { return m_logotypeType; }
    const CAsn1LogotypeInfo* Info() const { return m_info; }

  private:
    CAsn1ObjectIdentifier* m_logotypeType = nullptr;
    CAsn1LogotypeInfo* m_info = nullptr;
};

// LogotypeExtn ::= SEQUENCE {
//     communityLogos  [0] EXPLICIT SEQUENCE OF LogotypeInfo OPTIONAL,
//     issuerLogo      [1] EXPLICIT LogotypeInfo OPTIONAL,
//     subjectLogo     [2] EXPLICIT LogotypeInfo OPTIONAL,
//     otherLogos      [3] EXPLICIT SEQUENCE OF OtherLogotypeInfo OPTIONAL }     RFC 9399, 4.1
class CAsn1LogotypeExtn : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "LogotypeExtn";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1SequenceOf<CAsn1LogotypeInfo>* CommunityLogos() const { return m_communityLogos; }
    const CAsn1LogotypeInfo* IssuerLogo() const { return m_issuerLogo; }
    const CAsn1LogotypeInfo* SubjectLogo() const { return m_subjectLogo; }
    const CAsn1SequenceOf<CAsn1OtherLogotypeInfo>* OtherLogos() const { return m_otherLogos; }

  private:
    CAsn1SequenceOf<CAsn1LogotypeInfo>* m_communityLogos = nullptr;
    CAsn1LogotypeInfo* m_issuerLogo = nullptr;
    CAsn1LogotypeInfo* m_subjectLogo = nullptr;
    CAsn1SequenceOf<CAsn1OtherLogotypeInfo>* m_otherLogos = nullptr;
};
