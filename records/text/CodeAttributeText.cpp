#include "asn1/Asn1Oid.h"
#include "records/text/AttributeText.h"
#include "records/text/Decoded.h"
#include "records/text/GeneralNameText.h"
#include "records/text/OutlineText.h"
#include "records/text/RevocationText.h"
#include "records/text/SignatureParts.h"

// The attributes of signatures of programs and of documents.

namespace {

using ca::CTextLines;
using Value = std::span<const unsigned char>;

void SayStatements(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1ObjectIdentifier>> types(value);
    ca::SayEach(*types, lines, [&](const CAsn1ObjectIdentifier& type) {
        lines.Line(ca::OidWithName(OctetsOf(&type)));
    });
}

// SpcString ::= CHOICE { unicode [0] IMPLICIT BMPString, ascii [1] IMPLICIT IA5String }
std::wstring StringText(CAsn1Element string) {
    string.tag = string.tag == ca::ContextTag(0) ? kAsn1UnicodeString : kAsn1Ia5String;
    return ca::ValueText(string);
}

// SpcLink ::= CHOICE { url [0] IMPLICIT IA5String, moniker [1] IMPLICIT SEQUENCE,
//     file [2] EXPLICIT SpcString }
void SayLink(CAsn1Element link, CTextLines& lines) {
    if (link.tag == ca::ContextTag(0)) {
        link.tag = kAsn1Ia5String;
        lines.Line(kMsgAddress, ca::ValueText(link));
    } else if (link.tag == ca::ContextConstructed(2)) {
        lines.Line(kMsgAddress, StringText(ca::Child(link, 0)));
    } else {
        lines.Line(kMsgAddress, L"");
        const CTextLines::Level level(lines);
        ca::SayUnknownValue(link.raw, lines);
    }
}

// SpcSpOpusInfo ::= SEQUENCE {
//     programName  [0] EXPLICIT SpcString OPTIONAL,
//     moreInfo     [1] EXPLICIT SpcLink OPTIONAL,
//     ... }
void SayPublisher(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1Any>> members(value);
    ca::SayEach(*members, lines, [&](const CAsn1Any& any) {
        const CAsn1Element member = ca::FirstElement(any.Raw());
        if (member.tag == ca::ContextConstructed(0)) {
            lines.Line(kMsgTargetName, StringText(ca::Child(member, 0)));
        } else if (member.tag == ca::ContextConstructed(1)) {
            SayLink(ca::Child(member, 0), lines);
        } else {
            ca::SayUnknownValue(member.raw, lines);
        }
    });
}

constexpr ca::ExtensionRow kRows[] = {
    {"spcStatementType", SayStatements},
    {"spcSpOpusInfo", SayPublisher},
    {"spcNestedSignature", ca::SaySignedMessage},
    {"spcRfc3161", ca::SaySignedMessage},
    {"adobeRevocationInfoArchival", ca::SayRevocationValues},
};

}  // namespace

namespace ca {

std::span<const ExtensionRow> CodeAttributeRows() {
    return kRows;
}

}  // namespace ca
