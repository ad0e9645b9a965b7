#include "asn1/Asn1Oid.h"
#include "asn1/views/AttributeViews.h"
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

// SpcSpStatementType: a list of purposes, such as individual or commercial code signing.
void SayStatements(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1ObjectIdentifier>> types(value);
    ca::SayEach(*types, lines, [&](const CAsn1ObjectIdentifier& type) {
        lines.Line(ca::OidWithName(OctetsOf(&type)));
    });
}

// SpcLink ::= CHOICE: an address, a serialized object, or the name of a file.
void SayLink(const CAsn1SpcLinkView& link, CTextLines& lines) {
    if (const CAsn1Element url = link.Url(); !url.raw.empty()) {
        lines.Line(kMsgAddress, ca::ValueText(url));
    } else if (link.IsFile()) {
        lines.Line(kMsgAddress, ca::ValueText(link.File().Text()));
    } else {
        lines.Line(kMsgAddress, L"");
        const CTextLines::Level level(lines);
        // The serialized object: nobody but its class knows what it means.
        ca::SayUnknownValue(link.Element().raw, lines);
    }
}

// SpcSpOpusInfo: the program's name and where to read more, each optional and told by its tag.
void SayPublisher(Value value, CTextLines& lines) {
    const ca::CDecoded<CAsn1SequenceOf<CAsn1Any>> members(value);
    ca::SayEach(*members, lines, [&](const CAsn1Any& any) {
        const CAsn1SpcOpusMemberView member(any);
        if (member.IsProgramName()) {
            lines.Line(kMsgTargetName, ca::ValueText(member.ProgramName().Text()));
        } else if (member.IsMoreInfo()) {
            SayLink(member.MoreInfo(), lines);
        } else {
            ca::SayUnknownValue(any.Raw(), lines);
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
