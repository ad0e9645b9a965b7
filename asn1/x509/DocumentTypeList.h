#pragma once

#include "asn1/Asn1List.h"
#include "asn1/Asn1Members.h"
#include "asn1/Asn1Primitives.h"
#include "asn1/Asn1Strings.h"

// DocumentTypeListSyntax ::= SEQUENCE {
//     version      DocumentTypeListVersion,     -- INTEGER
//     docTypeList  SET OF DocumentType }   -- PrintableString     ICAO Doc 9303-12, 7.1.1.6
class CAsn1DocumentTypeList : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("DocumentTypeListSyntax");
    CA_ASN1_REQUIRED(CAsn1Integer, Version, "version");
    /// Type codes as the machine-readable zone has them: "P", "ID".
    CA_ASN1_REQUIRED(CAsn1SetOf<CAsn1PrintableString>, DocTypeList, "docTypeList");
    CA_ASN1_END;
};
