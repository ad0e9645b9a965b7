#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"
#include "asn1/x509/GeneralName.h"
#include "asn1/x509/Name.h"

// NamingAuthority ::= SEQUENCE {
//     namingAuthorityId    OBJECT IDENTIFIER OPTIONAL,
//     namingAuthorityUrl   IA5String OPTIONAL,
//     namingAuthorityText  DirectoryString OPTIONAL }     Common PKI 2.0, part 1, table 29
class CAsn1NamingAuthority : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "NamingAuthority";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ObjectIdentifier* NamingAuthorityId() const { return m_namingAuthorityId; }
    const CAsn1IA5String* NamingAuthorityUrl() const { return m_namingAuthorityUrl; }
    const CAsn1DirectoryString* NamingAuthorityText() const { return m_namingAuthorityText; }

  private:
    CAsn1ObjectIdentifier* m_namingAuthorityId = nullptr;
    CAsn1IA5String* m_namingAuthorityUrl = nullptr;
    CAsn1DirectoryString* m_namingAuthorityText = nullptr;
};

// ProfessionInfo ::= SEQUENCE {
//     namingAuthority     [0] EXPLICIT NamingAuthority OPTIONAL,
//     professionItems     SEQUENCE OF DirectoryString,
//     professionOIDs      SEQUENCE OF OBJECT IDENTIFIER OPTIONAL,
//     registrationNumber  PrintableString OPTIONAL,
//     addProfessionInfo   OCTET STRING OPTIONAL }     Common PKI 2.0, part 1, table 29
class CAsn1ProfessionInfo : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ProfessionInfo";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1NamingAuthority* NamingAuthority() const { return m_namingAuthority; }
    const CAsn1SequenceOf<CAsn1DirectoryString>* ProfessionItems() const {
        return m_professionItems;
    }
    const CAsn1SequenceOf<CAsn1ObjectIdentifier>* ProfessionOIDs() const {
        return m_professionOIDs;
    }
    const CAsn1PrintableString* RegistrationNumber() const { return m_registrationNumber; }
    const CAsn1OctetString* AddProfessionInfo() const { return m_addProfessionInfo; }

  private:
    CAsn1NamingAuthority* m_namingAuthority = nullptr;
    CAsn1SequenceOf<CAsn1DirectoryString>* m_professionItems = nullptr;
    CAsn1SequenceOf<CAsn1ObjectIdentifier>* m_professionOIDs = nullptr;
    CAsn1PrintableString* m_registrationNumber = nullptr;
    CAsn1OctetString* m_addProfessionInfo = nullptr;
};

// Admissions ::= SEQUENCE {
//     admissionAuthority  [0] EXPLICIT GeneralName OPTIONAL,
//     namingAuthority     [1] EXPLICIT NamingAuthority OPTIONAL,
//     professionInfos     SEQUENCE OF ProfessionInfo }     Common PKI 2.0, part 1, table 29
class CAsn1Admissions : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "Admissions";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Any* AdmissionAuthority() const { return m_admissionAuthority; }
    const CAsn1NamingAuthority* NamingAuthority() const { return m_namingAuthority; }
    const CAsn1SequenceOf<CAsn1ProfessionInfo>* ProfessionInfos() const {
        return m_professionInfos;
    }

  private:
    CAsn1Any* m_admissionAuthority = nullptr;
    CAsn1NamingAuthority* m_namingAuthority = nullptr;
    CAsn1SequenceOf<CAsn1ProfessionInfo>* m_professionInfos = nullptr;
};

// AdmissionSyntax ::= SEQUENCE {
//     admissionAuthority    GeneralName OPTIONAL,
//     contentsOfAdmissions  SEQUENCE OF Admissions }     Common PKI 2.0, part 1, table 29
class CAsn1AdmissionSyntax : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "AdmissionSyntax";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1GeneralName* AdmissionAuthority() const { return m_admissionAuthority; }
    const CAsn1SequenceOf<CAsn1Admissions>* ContentsOfAdmissions() const {
        return m_contentsOfAdmissions;
    }

  private:
    CAsn1GeneralName* m_admissionAuthority = nullptr;
    CAsn1SequenceOf<CAsn1Admissions>* m_contentsOfAdmissions = nullptr;
};

// ProcurationSyntax ::= SEQUENCE {
//     country             [1] EXPLICIT PrintableString OPTIONAL,
//     typeOfSubstitution  [2] EXPLICIT DirectoryString OPTIONAL,
//     signingFor          [3] EXPLICIT SigningFor }
// SigningFor ::= CHOICE {
//     thirdPerson  GeneralName,
//     certRef      IssuerSerial }     Common PKI 2.0, part 1, table 28
class CAsn1ProcurationSyntax : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "ProcurationSyntax";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1PrintableString* Country() const { return m_country; }
    const CAsn1DirectoryString* TypeOfSubstitution() const { return m_typeOfSubstitution; }
    const CAsn1Any* SigningFor() const { return m_signingFor; }

  private:
    CAsn1PrintableString* m_country = nullptr;
    CAsn1DirectoryString* m_typeOfSubstitution = nullptr;
    CAsn1Any* m_signingFor = nullptr;
};
