#include "asn1/views/AttributeViews.h"
#include "records/text/AttributeText.h"
#include "records/text/Decoded.h"
#include "records/text/SharedFormatters.h"

// Attributes of certification requests (RFC 2985, 5.4) and of what key stores hold (RFC 2985, 5.5).

namespace {

using ca::CTextLines;
using Value = std::span<const unsigned char>;

// EnrollmentNameValuePair (MS-WCCE).
void SayNameAndValue(Value value, CTextLines& lines) {
    const CAsn1EnrollmentNameValueView pair(ca::FirstElement(value));
    if (pair.Element().tag != kAsn1Sequence || !ca::IsText(pair.Name())) {
        throw MakeAsn1WrongTag("EnrollmentNameValuePair", pair.Element().tag, 0);
    }
    lines.Line(ca::ValueText(pair.Name()), ca::ValueText(pair.Value()));
}

// The provider by its name; the signature that may stand beside it says nothing to people.
void SayProvider(Value value, CTextLines& lines) {
    const CAsn1CspProviderView provider(ca::FirstElement(value));
    if (provider.Element().tag != kAsn1Sequence || !ca::IsText(provider.CspName())) {
        throw MakeAsn1WrongTag("CSPProvider", provider.Element().tag, 0);
    }
    lines.Line(ca::ValueText(provider.CspName()));
}

// Machine, user and program that asked, in this order.
void SayClient(Value value, CTextLines& lines) {
    const CAsn1RequestClientInfoView client(ca::FirstElement(value));
    std::wstring text;
    for (const CAsn1Element& name :
         {client.MachineName(), client.UserName(), client.ProcessName()}) {
        if (!ca::IsText(name)) {
            throw MakeAsn1WrongTag("RequestClientInfo", name.tag, 0);
        }
        ca::AppendListed(text, ca::ValueText(name));
    }
    lines.Line(text);
}

constexpr ca::ExtensionRow kRows[] = {
    {"challengePassword", ca::SayPresent},  // a secret
    {"userPassword", ca::SayPresent},      {"unstructuredName", ca::SayText},
    {"unstructuredAddress", ca::SayText},  {"friendlyName", ca::SayText},
    {"localKeyId", ca::SayOctetString},    {"msCSPName", ca::SayText},
    {"msLocalKeySet", ca::SayPresent},     {"msOsVersion", ca::SayText},
    {"msEnrollmentCSP", SayProvider},      {"msEnrollmentNameValue", SayNameAndValue},
    {"msRequestClientInfo", SayClient},
};

}  // namespace

namespace ca {

std::span<const ExtensionRow> RequestAttributeRows() {
    return kRows;
}

}  // namespace ca
