#pragma once

#include "asn1/Asn1Members.h"
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
    CA_ASN1_SEQUENCE("CABFOrganizationIdentifier");
    CA_ASN1_REQUIRED(CAsn1PrintableString, RegistrationSchemeIdentifier,
                     "registrationSchemeIdentifier");
    CA_ASN1_REQUIRED(CAsn1PrintableString, RegistrationCountry, "registrationCountry");
    CA_ASN1_OPTIONAL_IMPLICIT(0, CAsn1PrintableString, RegistrationStateOrProvince,
                              "registrationStateOrProvince");
    CA_ASN1_REQUIRED(CAsn1DirectoryString, RegistrationReference, "registrationReference");
    CA_ASN1_END;
};

// TorServiceDescriptorHash ::= SEQUENCE {
//     onionURI              UTF8String,
//     algorithm             AlgorithmIdentifier,
//     subjectPublicKeyHash  BIT STRING }     CA/B Forum EV Guidelines, appendix F
class CAsn1TorServiceDescriptorHash : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("TorServiceDescriptorHash");
    CA_ASN1_REQUIRED(CAsn1UTF8String, OnionURI, "onionURI");
    CA_ASN1_REQUIRED(CAsn1AlgorithmIdentifier, Algorithm, "algorithm");
    CA_ASN1_REQUIRED(CAsn1BitString, SubjectPublicKeyHash, "subjectPublicKeyHash");
    CA_ASN1_END;
};
