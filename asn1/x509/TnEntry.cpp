#include "asn1/x509/TnEntry.h"

#include "asn1/FieldReader.h"

void CAsn1TelephoneNumberRange::Decode() {
    CFieldReader fields(*this);
    m_start = fields.Required<CAsn1IA5String>("start");
    m_count = fields.Required<CAsn1Integer>("count");
    fields.End();
}

void CAsn1TnEntry::Decode() {
    CChoiceReader fields(*this);
    m_spc = fields.Explicit<CAsn1IA5String>(0, "spc");
    m_range = fields.Explicit<CAsn1TelephoneNumberRange>(1, "range");
    m_one = fields.Explicit<CAsn1IA5String>(2, "one");
    fields.End();
}
