#pragma once

#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"
#include "asn1/Asn1Typed.h"
#include "asn1/x509/AlgorithmIdentifier.h"
#include "asn1/x509/Name.h"

// CABFOrganizationIdentifier ::= SEQUENCE {
//     registrationSchemeIdentifier  PrintableString,     -- "NTR", "VAT", ...
//     registrationCountry           PrintableString,
//     registrationStateOrProvince   [0] PrintableString OPTIONAL,
//     registrationReference         UTF8String }     CA/B Forum EV Guidelines, 9.8.2
// References are met as PrintableString too.
class CAsn1CabfOrganizationIdentifier : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "CABFOrganizationIdentifier";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1PrintableString* RegistrationSchemeIdentifier() const {
        return m_registrationSchemeIdentifier;
    }
    const CAsn1PrintableString* RegistrationCountry() const { return m_registrationCountry; }
    const CAsn1PrintableString* RegistrationStateOrProvince() const {
        return m_registrationStateOrProvince;
    }
    const CAsn1DirectoryString* RegistrationReference() const { return m_registrationReference; }

  private:
    CAsn1PrintableString* m_registrationSchemeIdentifier = nullptr;
    CAsn1PrintableString* m_registrationCountry = nullptr;
    CAsn1PrintableString* m_registrationStateOrProvince = nullptr;
    CAsn1DirectoryString* m_registrationReference = nullptr;
};

// TorServiceDescriptorHash ::= SEQUENCE {
//     onionURI              UTF8String,
//     algorithm             AlgorithmIdentifier,
//     subjectPublicKeyHash  BIT STRING }     CA/B Forum EV Guidelines, appendix F
class CAsn1TorServiceDescriptorHash : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "TorServiceDescriptorHash";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1UTF8String* OnionURI() const { return m_onionURI; }
    const CAsn1AlgorithmIdentifier* Algorithm() const { return m_algorithm; }
    const CAsn1BitString* SubjectPublicKeyHash() const { return m_subjectPublicKeyHash; }

  private:
    CAsn1UTF8String* m_onionURI = nullptr;
    CAsn1AlgorithmIdentifier* m_algorithm = nullptr;
    CAsn1BitString* m_subjectPublicKeyHash = nullptr;
};
