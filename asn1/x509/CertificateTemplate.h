#pragma once

#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Typed.h"

// CertificateTemplate ::= SEQUENCE {
//     templateID            OBJECT IDENTIFIER,
//     templateMajorVersion  INTEGER OPTIONAL,
//     templateMinorVersion  INTEGER OPTIONAL }     MS-WCCE, 2.2.2.7.7.2
class CAsn1CertificateTemplate : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "CertificateTemplate";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1ObjectIdentifier* TemplateID() const { return m_templateID; }
    const CAsn1Integer* TemplateMajorVersion() const { return m_templateMajorVersion; }
    const CAsn1Integer* TemplateMinorVersion() const { return m_templateMinorVersion; }

  private:
    CAsn1ObjectIdentifier* m_templateID = nullptr;
    CAsn1Integer* m_templateMajorVersion = nullptr;
    CAsn1Integer* m_templateMinorVersion = nullptr;
};
