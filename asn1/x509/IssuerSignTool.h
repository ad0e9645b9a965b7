#pragma once

#include "asn1/Asn1Typed.h"
#include "asn1/x509/Name.h"

// IssuerSignTool ::= SEQUENCE {
//     signTool      UTF8String,
//     cATool        UTF8String,
//     signToolCert  UTF8String,
//     cAToolCert    UTF8String }     FSB order 795 of 2011, 19
// Issuers write other string types too.
class CAsn1IssuerSignTool : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "IssuerSignTool";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1DirectoryString* SignTool() const { return m_signTool; }
    const CAsn1DirectoryString* CATool() const { return m_cATool; }
    const CAsn1DirectoryString* SignToolCert() const { return m_signToolCert; }
    const CAsn1DirectoryString* CAToolCert() const { return m_cAToolCert; }

  private:
    CAsn1DirectoryString* m_signTool = nullptr;
    CAsn1DirectoryString* m_cATool = nullptr;
    CAsn1DirectoryString* m_signToolCert = nullptr;
    CAsn1DirectoryString* m_cAToolCert = nullptr;
};
