#include "asn1/x509/DocumentTypeList.h"

#include "asn1/FieldReader.h"

void CAsn1DocumentTypeList::Decode() {
    CFieldReader fields(*this);
    m_version = fields.Required<CAsn1Integer>("version");
    m_docTypeList = fields.Required<CAsn1SetOf<CAsn1PrintableString>>("docTypeList");
    fields.End();
}
