#include "records/text/SharedFormatters.h"

#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Time.h"
#include "records/text/Decoded.h"
#include "records/text/GeneralNameText.h"
#include "records/text/SignatureParts.h"
#include "records/text/TimeText.h"

namespace ca {

std::wstring MemberText(const CAsn1Object* member) {
    return member != nullptr ? ValueText(ElementOf(*member)) : std::wstring();
}

std::wstring HiddenText(const CAsn1Object* octets) {
    CAsn1Element text;
    text.tag = kAsn1Utf8String;
    text.content = Changeable(OctetsOf(octets));
    return ValueText(text);
}

void AppendListed(std::wstring& text, std::wstring_view more) {
    if (!more.empty()) {
        text += text.empty() ? L"" : L", ";
        text += more;
    }
}

void SayText(std::span<unsigned char> value, CTextLines& lines) {
    const CAsn1Element text = FirstElement(value);
    if (!IsText(text)) {
        throw MakeAsn1WrongTag("DirectoryString", text.tag, 0);
    }
    lines.Line(ValueText(text));
}

void SayOctetString(std::span<unsigned char> value, CTextLines& lines) {
    const CDecoded<CAsn1OctetString> octets(value);
    lines.Line(OctetsText(&*octets));
}

void SayTime(std::span<unsigned char> value, CTextLines& lines) {
    const CDecoded<CAsn1Time> time(value);
    const CAsn1Element element = ElementOf(*time);
    const TimeForms forms = DescribeTime(element);
    if (!forms.seconds) {
        throw MakeAsn1Fault(Asn1Fault::kMalformed, "Time", 0);
    }
    lines.Line(TimeLine(forms));
}

void SayOid(std::span<unsigned char> value, CTextLines& lines) {
    const CDecoded<CAsn1ObjectIdentifier> oid(value);
    lines.Line(OidWithName(OctetsOf(&*oid)));
}

void SayOidList(std::span<unsigned char> value, CTextLines& lines) {
    const CDecoded<CAsn1SequenceOf<CAsn1ObjectIdentifier>> list(value);
    SayEach(*list, lines,
            [&](const CAsn1ObjectIdentifier& oid) { lines.Line(OidWithName(OctetsOf(&oid))); });
}

void SayPresent(std::span<unsigned char> /*value*/, CTextLines& lines) {
    lines.Line(kMsgPresent);
}

}  // namespace ca
