#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
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
    CA_ASN1_SEQUENCE("NamingAuthority");
    CA_ASN1_OPTIONAL(CAsn1ObjectIdentifier, NamingAuthorityId, "namingAuthorityId");
    CA_ASN1_OPTIONAL(CAsn1IA5String, NamingAuthorityUrl, "namingAuthorityUrl");
    CA_ASN1_OPTIONAL(CAsn1DirectoryString, NamingAuthorityText, "namingAuthorityText");
    CA_ASN1_END;
};

// ProfessionInfo ::= SEQUENCE {
//     namingAuthority     [0] EXPLICIT NamingAuthority OPTIONAL,
//     professionItems     SEQUENCE OF DirectoryString,
//     professionOIDs      SEQUENCE OF OBJECT IDENTIFIER OPTIONAL,
//     registrationNumber  PrintableString OPTIONAL,
//     addProfessionInfo   OCTET STRING OPTIONAL }     Common PKI 2.0, part 1, table 29
class CAsn1ProfessionInfo : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ProfessionInfo");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1NamingAuthority, NamingAuthority, "namingAuthority");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1DirectoryString>, ProfessionItems, "professionItems");
    CA_ASN1_OPTIONAL(CAsn1SequenceOf<CAsn1ObjectIdentifier>, ProfessionOIDs, "professionOIDs");
    CA_ASN1_OPTIONAL(CAsn1PrintableString, RegistrationNumber, "registrationNumber");
    CA_ASN1_OPTIONAL(CAsn1OctetString, AddProfessionInfo, "addProfessionInfo");
    CA_ASN1_END;
};

// Admissions ::= SEQUENCE {
//     admissionAuthority  [0] EXPLICIT GeneralName OPTIONAL,
//     namingAuthority     [1] EXPLICIT NamingAuthority OPTIONAL,
//     professionInfos     SEQUENCE OF ProfessionInfo }     Common PKI 2.0, part 1, table 29
class CAsn1Admissions : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("Admissions");
    CA_ASN1_OPTIONAL_EXPLICIT(0, CAsn1Any, AdmissionAuthority, "admissionAuthority");
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1NamingAuthority, NamingAuthority, "namingAuthority");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1ProfessionInfo>, ProfessionInfos, "professionInfos");
    CA_ASN1_END;
};

// AdmissionSyntax ::= SEQUENCE {
//     admissionAuthority    GeneralName OPTIONAL,
//     contentsOfAdmissions  SEQUENCE OF Admissions }     Common PKI 2.0, part 1, table 29
class CAsn1AdmissionSyntax : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("AdmissionSyntax");
    CA_ASN1_OPTIONAL(CAsn1GeneralName, AdmissionAuthority, "admissionAuthority");
    CA_ASN1_REQUIRED(CAsn1SequenceOf<CAsn1Admissions>, ContentsOfAdmissions,
                     "contentsOfAdmissions");
    CA_ASN1_END;
};

// ProcurationSyntax ::= SEQUENCE {
//     country             [1] EXPLICIT PrintableString OPTIONAL,
//     typeOfSubstitution  [2] EXPLICIT DirectoryString OPTIONAL,
//     signingFor          [3] EXPLICIT SigningFor }
// SigningFor ::= CHOICE {
//     thirdPerson  GeneralName,
//     certRef      IssuerSerial }     Common PKI 2.0, part 1, table 28
class CAsn1ProcurationSyntax : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("ProcurationSyntax");
    CA_ASN1_OPTIONAL_EXPLICIT(1, CAsn1PrintableString, Country, "country");
    CA_ASN1_OPTIONAL_EXPLICIT(2, CAsn1DirectoryString, TypeOfSubstitution, "typeOfSubstitution");
    CA_ASN1_REQUIRED_EXPLICIT(3, CAsn1Any, SigningFor, "signingFor");
    CA_ASN1_END;
};
