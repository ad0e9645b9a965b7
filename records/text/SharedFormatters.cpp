#include "records/text/SharedFormatters.h"

#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Time.h"
#include "asn1/x509/PrivateKeyUsagePeriod.h"
#include "records/text/Decoded.h"
#include "records/text/GeneralNameText.h"
#include "records/text/SignatureParts.h"
#include "records/text/TimeText.h"

namespace ca {

namespace {

// A time whose tag is implicit.
void SayTimeMember(Sentence label, const CAsn1Object* time, CTextLines& lines) {
    if (time == nullptr) {
        return;
    }
    // The context tag hides the type, which is the only one there can be.
    CAsn1Element element;
    element.tag = kAsn1GeneralizedTime;
    element.content = OctetsOf(time);
    const TimeForms forms = DescribeTime(element);
    if (forms.seconds) {
        lines.Line(label, TimeLine(forms));
    } else {
        lines.Unreadable(SetZORNAMessage(label), element.content);
    }
}

}  // namespace

std::wstring MemberText(const CAsn1Object* member) {
    return member != nullptr ? ValueText(*member) : std::wstring();
}

std::wstring HiddenText(const CAsn1Object* octets) {
    CAsn1Element text;
    text.tag = kAsn1Utf8String;
    text.content = OctetsOf(octets);
    return ValueText(text);
}

void AppendListed(std::wstring& text, std::wstring_view more) {
    if (!more.empty()) {
        text += text.empty() ? L"" : L", ";
        text += more;
    }
}

void SayText(std::span<const unsigned char> value, CTextLines& lines) {
    const CAsn1Element text = FirstElement(value);
    if (!IsText(text)) {
        throw MakeAsn1WrongTag("DirectoryString", text.tag, 0);
    }
    lines.Line(ValueText(text));
}

void SayOctetString(std::span<const unsigned char> value, CTextLines& lines) {
    const CDecoded<CAsn1OctetString> octets(value);
    lines.Line(OctetsText(&*octets));
}

void SayTimeValue(std::span<const unsigned char> value, CTextLines& lines) {
    const CDecoded<CAsn1Time> time(value);
    const TimeForms forms = DescribeTime(*time);
    if (!forms.seconds) {
        throw MakeAsn1Fault(Asn1Fault::kMalformed, "Time", 0);
    }
    lines.Line(TimeLine(forms));
}

void SayOidValue(std::span<const unsigned char> value, CTextLines& lines) {
    const CDecoded<CAsn1ObjectIdentifier> oid(value);
    lines.Line(OidWithName(OctetsOf(&*oid)));
}

void SayOidList(std::span<const unsigned char> value, CTextLines& lines) {
    const CDecoded<CAsn1SequenceOf<CAsn1ObjectIdentifier>> list(value);
    SayEach(*list, lines,
            [&](const CAsn1ObjectIdentifier& oid) { lines.Line(OidWithName(OctetsOf(&oid))); });
}

void SayNames(std::span<const unsigned char> value, CTextLines& lines) {
    const CDecoded<CAsn1SequenceOf<CAsn1Any>> names(value);
    SayGeneralNames(ElementOf(*names), lines);
}

// RFC 3280, 4.2.1.4; given up by RFC 5280, still met.
void SayPrivateKeyUsagePeriod(std::span<const unsigned char> value, CTextLines& lines) {
    const CDecoded<CAsn1PrivateKeyUsagePeriod> period(value);
    SayTimeMember(kMsgNotBefore, period->NotBefore(), lines);
    SayTimeMember(kMsgNotAfter, period->NotAfter(), lines);
}

// What a value of NULL or a secret says: that it is there.
void SayPresent(std::span<const unsigned char> /*value*/, CTextLines& lines) {
    lines.Line(kMsgPresent);
}

}  // namespace ca
