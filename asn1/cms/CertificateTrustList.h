#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Time.h"
#include "asn1/attributes/Attribute.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/Extension.h"

// TrustedSubject ::= SEQUENCE {
//     subjectIdentifier  OCTET STRING,
//     subjectAttributes  SET OF Attribute OPTIONAL }     CTL_ENTRY of wincrypt.h
class CAsn1TrustedSubject : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "TrustedSubject";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1OctetString* SubjectIdentifier() const { return m_subjectIdentifier; }
    const CAsn1SetOf<CAsn1Attribute>* SubjectAttributes() const { return m_subjectAttributes; }

  private:
    CAsn1OctetString* m_subjectIdentifier = nullptr;
    CAsn1SetOf<CAsn1Attribute>* m_subjectAttributes = nullptr;
};

// CertificateTrustList ::= SEQUENCE {
//     version           INTEGER DEFAULT 0,
//     subjectUsage      SEQUENCE OF OBJECT IDENTIFIER,
//     listIdentifier    OCTET STRING OPTIONAL,
//     sequenceNumber    INTEGER OPTIONAL,
//     ctlThisUpdate     Time,
//     ctlNextUpdate     Time OPTIONAL,
//     subjectAlgorithm  AlgorithmIdentifier,
//     trustedSubjects   SEQUENCE OF TrustedSubject OPTIONAL,
//     ctlExtensions     [0] EXPLICIT Extensions OPTIONAL }     CTL_INFO of wincrypt.h
// A list of roots, or the members of a catalogue.
class CAsn1CertificateTrustList : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "CertificateTrustList";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Version() const { return m_version; }
    const CAsn1SequenceOf<CAsn1ObjectIdentifier>* SubjectUsage() const { return m_subjectUsage; }
    const CAsn1OctetString* ListIdentifier() const { return m_listIdentifier; }
    const CAsn1Integer* SequenceNumber() const { return m_sequenceNumber; }
    const CAsn1Time* CtlThisUpdate() const { return m_ctlThisUpdate; }
    const CAsn1Time* CtlNextUpdate() const { return m_ctlNextUpdate; }
    const CAsn1AlgorithmIdentifier* SubjectAlgorithm() const { return m_subjectAlgorithm; }
    const CAsn1SequenceOf<CAsn1TrustedSubject>* TrustedSubjects() const {
        return m_trustedSubjects;
    }
    const CAsn1Extensions* CtlExtensions() const { return m_ctlExtensions; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1SequenceOf<CAsn1ObjectIdentifier>* m_subjectUsage = nullptr;
    CAsn1OctetString* m_listIdentifier = nullptr;
    CAsn1Integer* m_sequenceNumber = nullptr;
    CAsn1Time* m_ctlThisUpdate = nullptr;
    CAsn1Time* m_ctlNextUpdate = nullptr;
    CAsn1AlgorithmIdentifier* m_subjectAlgorithm = nullptr;
    CAsn1SequenceOf<CAsn1TrustedSubject>* m_trustedSubjects = nullptr;
    CAsn1Extensions* m_ctlExtensions = nullptr;
};
