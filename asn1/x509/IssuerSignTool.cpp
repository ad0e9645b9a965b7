#include "asn1/x509/IssuerSignTool.h"

#include "asn1/FieldReader.h"

void CAsn1IssuerSignTool::Decode() {
    CFieldReader fields(*this);
    m_signTool = fields.Required<CAsn1DirectoryString>("signTool");
    m_cATool = fields.Required<CAsn1DirectoryString>("cATool");
    m_signToolCert = fields.Required<CAsn1DirectoryString>("signToolCert");
    m_cAToolCert = fields.Required<CAsn1DirectoryString>("cAToolCert");
    fields.End();
}
