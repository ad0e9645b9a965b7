#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Time.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/Attribute.h"
#include "asn1/x509/Extension.h"

// TrustedSubject ::= SEQUENCE {
//     subjectIdentifier  OCTET STRING,
//     subjectAttributes  SET OF Attribute OPTIONAL }     CTL_ENTRY of wincrypt.h
class CAsn1TrustedSubject : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("TrustedSubject");
    CA_ASN1_REQUIRED(CAsn1OctetString, SubjectIdentifier, "subjectIdentifier");
    CA_ASN1_OPTIONAL(CAsn1SetOf<CAsn1Attribute>, SubjectAttributes, "subjectAttributes");
    CA_ASN1_END;
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
    CA_ASN1_SEQUENCE("CertificateTrustList");
    CA_ASN1_OPTIONAL(CAsn1Integer, Version, "version");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1ObjectIdentifier>, SubjectUsage, "subjectUsage");
    CA_ASN1_OPTIONAL(CAsn1OctetString, ListIdentifier, "listIdentifier");
    CA_ASN1_OPTIONAL(CAsn1Integer, SequenceNumber, "sequenceNumber");
    CA_ASN1_REQUIRED(CAsn1Time, CtlThisUpdate, "ctlThisUpdate");
    CA_ASN1_OPTIONAL(CAsn1Time, CtlNextUpdate, "ctlNextUpdate");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, SubjectAlgorithm, "subjectAlgorithm");
    CA_ASN1_OPTIONAL(CAsn1SequenceOf<CAsn1TrustedSubject>, TrustedSubjects, "trustedSubjects");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1Extensions, CtlExtensions, "ctlExtensions");
    CA_ASN1_END;
};
