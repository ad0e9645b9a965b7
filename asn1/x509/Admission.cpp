#include "asn1/x509/Admission.h"

#include "asn1/FieldReader.h"

void CAsn1NamingAuthority::Decode() {
    CFieldReader fields(*this);
    m_namingAuthorityId = fields.Optional<CAsn1ObjectIdentifier>("namingAuthorityId");
    m_namingAuthorityUrl = fields.Optional<CAsn1IA5String>("namingAuthorityUrl");
    m_namingAuthorityText = fields.Optional<CAsn1DirectoryString>("namingAuthorityText");
    fields.End();
}

void CAsn1ProfessionInfo::Decode() {
    CFieldReader fields(*this);
    m_namingAuthority = fields.OptionalExplicit<CAsn1NamingAuthority>(0, "namingAuthority");
    m_professionItems = fields.Required<CAsn1SequenceOf<CAsn1DirectoryString>>("professionItems");
    m_professionOIDs = fields.Optional<CAsn1SequenceOf<CAsn1ObjectIdentifier>>("professionOIDs");
    m_registrationNumber = fields.Optional<CAsn1PrintableString>("registrationNumber");
    m_addProfessionInfo = fields.Optional<CAsn1OctetString>("addProfessionInfo");
    fields.End();
}

void CAsn1Admissions::Decode() {
    CFieldReader fields(*this);
    m_admissionAuthority = fields.OptionalExplicit<CAsn1Any>(0, "admissionAuthority");
    m_namingAuthority = fields.OptionalExplicit<CAsn1NamingAuthority>(1, "namingAuthority");
    m_professionInfos = fields.Required<CAsn1SequenceOf<CAsn1ProfessionInfo>>("professionInfos");
    fields.End();
}

void CAsn1AdmissionSyntax::Decode() {
    CFieldReader fields(*this);
    m_admissionAuthority = fields.Optional<CAsn1GeneralName>("admissionAuthority");
    m_contentsOfAdmissions =
        fields.Required<CAsn1SequenceOf<CAsn1Admissions>>("contentsOfAdmissions");
    fields.End();
}

void CAsn1ProcurationSyntax::Decode() {
    CFieldReader fields(*this);
    m_country = fields.OptionalExplicit<CAsn1PrintableString>(1, "country");
    m_typeOfSubstitution = fields.OptionalExplicit<CAsn1DirectoryString>(2, "typeOfSubstitution");
    m_signingFor = fields.RequiredExplicit<CAsn1Any>(3, "signingFor");
    fields.End();
}
