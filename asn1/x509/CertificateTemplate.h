#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Typed.h"

// CertificateTemplate ::= SEQUENCE {
//     templateID            OBJECT IDENTIFIER,
//     templateMajorVersion  INTEGER OPTIONAL,
//     templateMinorVersion  INTEGER OPTIONAL }     MS-WCCE, 2.2.2.7.7.2
class CAsn1CertificateTemplate : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("CertificateTemplate");
    CA_ASN1_REQUIRED(CAsn1ObjectIdentifier, TemplateID, "templateID");
    CA_ASN1_OPTIONAL(CAsn1Integer, TemplateMajorVersion, "templateMajorVersion");
    CA_ASN1_OPTIONAL(CAsn1Integer, TemplateMinorVersion, "templateMinorVersion");
    CA_ASN1_END;
};
