#include "records/text/AttributeText.h"
#include "records/text/Decoded.h"
#include "records/text/SharedFormatters.h"

// Attributes of certification requests (RFC 2985 5.4) and of what key stores hold (RFC 2985 5.5).

namespace {

using ca::CTextLines;
using Value = std::span<const unsigned char>;

// EnrollmentNameValuePair ::= SEQUENCE { name BMPString, value BMPString }     MS-WCCE, 2.2.2.7
void SayNameAndValue(Value value, CTextLines& lines) {
    const CAsn1Element pair = ca::FirstElement(value);
    if (pair.tag != kAsn1Sequence || !ca::IsText(ca::Child(pair, 0))) {
        throw MakeAsn1WrongTag("EnrollmentNameValuePair", pair.tag, 0);
    }
    lines.Line(ca::ValueText(ca::Child(pair, 0)), ca::ValueText(ca::Child(pair, 1)));
}

// CSPProvider ::= SEQUENCE { keySpec INTEGER, cspName BMPString, signature BIT STRING }
// MS-WCCE, 2.2.2.7
void SayProvider(Value value, CTextLines& lines) {
    const CAsn1Element provider = ca::FirstElement(value);
    if (provider.tag != kAsn1Sequence || !ca::IsText(ca::Child(provider, 1))) {
        throw MakeAsn1WrongTag("CSPProvider", provider.tag, 0);
    }
    lines.Line(ca::ValueText(ca::Child(provider, 1)));
}

// RequestClientInfo ::= SEQUENCE {
//     clientId     INTEGER,
//     machineName  UTF8String,
//     userName     UTF8String,
//     processName  UTF8String }     MS-WCCE, 2.2.2.7
void SayClient(Value value, CTextLines& lines) {
    const CAsn1Element client = ca::FirstElement(value);
    std::wstring text;
    for (std::size_t member = 1; member <= 3; ++member) {
        const CAsn1Element name = ca::Child(client, member);
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
