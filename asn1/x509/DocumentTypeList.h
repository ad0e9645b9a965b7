#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"

// DocumentTypeListSyntax ::= SEQUENCE {
//     version      DocumentTypeListVersion,     -- INTEGER
//     docTypeList  SET OF DocumentType }   -- PrintableString     ICAO Doc 9303-12, 7.1.1.6
class CAsn1DocumentTypeList : public CAsn1TypedObject {
  public:
    using CAsn1TypedObject::CAsn1TypedObject;
    static constexpr const char* kName = "DocumentTypeListSyntax";
    static constexpr unsigned char kTag = kAsn1Sequence;

    void Decode() override;

    const CAsn1Integer* Version() const { return m_version; }
    /// Type codes as the machine-readable zone has them: "P", "ID".
    const CAsn1SetOf<CAsn1PrintableString>* DocTypeList() const { return m_docTypeList; }

  private:
    CAsn1Integer* m_version = nullptr;
    CAsn1SetOf<CAsn1PrintableString>* m_docTypeList = nullptr;
};
