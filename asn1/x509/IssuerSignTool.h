#pragma once

#include "asn1/Asn1Members.h"
#include "asn1/Asn1Typed.h"
#include "asn1/x509/Name.h"

// IssuerSignTool ::= SEQUENCE {
//     signTool      UTF8String,
//     cATool        UTF8String,
//     signToolCert  UTF8String,
//     cAToolCert    UTF8String }     FSB order 795 of 2011, 19
// Issuers write other string types too.
class CAsn1IssuerSignTool : public CAsn1TypedObject {
    CA_ASN1_SEQUENCE("IssuerSignTool");
    CA_ASN1_REQUIRED(CAsn1DirectoryString, SignTool, "signTool");
    CA_ASN1_REQUIRED(CAsn1DirectoryString, CATool, "cATool");
    CA_ASN1_REQUIRED(CAsn1DirectoryString, SignToolCert, "signToolCert");
    CA_ASN1_REQUIRED(CAsn1DirectoryString, CAToolCert, "cAToolCert");
    CA_ASN1_END;
};
