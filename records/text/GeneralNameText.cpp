#include "records/text/GeneralNameText.h"

#include "asn1/Oid.h"
#include "asn1/x509/GeneralName.h"
#include "common/DecimalText.h"
#include "common/Exception.h"
#include "common/Hex.h"
#include "records/text/NameText.h"
#include "records/text/OutlineText.h"
#include "records/text/X400Text.h"

#include <algorithm>
#include <bit>
#include <string_view>

namespace {

using ca::Octets;

// Octets of an address; with a mask after them twice as many (RFC 5280, 4.2.1.10).
constexpr std::size_t kIpV4 = 4;
constexpr std::size_t kIpV6 = 16;

std::wstring IpV4Text(Octets octets) {
    std::wstring text;
    for (const unsigned char octet : octets) {
        if (!text.empty()) {
            text += L'.';
        }
        text += ca::DecimalText(octet);
    }
    return text;
}

// The longest run of two or more zero groups, the first of equals (RFC 5952, 4.2).
struct ZeroRun {
    std::size_t begin = 8;
    std::size_t length = 1;
};

ZeroRun LongestZeroRun(Octets octets) {
    ZeroRun best;
    std::size_t length = 0;
    for (std::size_t group = 0; group < 8; ++group) {
        const bool isZero = octets[2 * group] == 0 && octets[2 * group + 1] == 0;
        length = isZero ? length + 1 : 0;
        if (length > best.length) {
            best = {group + 1 - length, length};
        }
    }
    return best;
}

// Without leading zeros (RFC 5952, 4.1), in small letters (4.3).
void AppendGroup(std::wstring& text, unsigned value) {
    int shift = 12;
    while (shift > 0 && (value >> shift) == 0) {
        shift -= 4;
    }
    for (; shift >= 0; shift -= 4) {
        text += static_cast<wchar_t>(ca::HexDigit(value >> shift));
    }
}

// The form of RFC 5952.
std::wstring IpV6Text(Octets octets) {
    const ZeroRun zeros = LongestZeroRun(octets);
    std::wstring text;
    for (std::size_t group = 0; group < 8; ++group) {
        if (group == zeros.begin) {
            text += L"::";
            group += zeros.length - 1;
            continue;
        }
        // After "::" there is a colon already.
        if (!text.empty() && text.back() != L':') {
            text += L':';
        }
        AppendGroup(text, static_cast<unsigned>(octets[2 * group] << 8 | octets[2 * group + 1]));
    }
    return text;
}

// Length of the prefix that a mask stands for; -1 for ones after a zero.
int PrefixLength(Octets mask) {
    int length = 0;
    bool hasEnded = false;
    for (const unsigned char octet : mask) {
        const int ones = std::countl_one(octet);
        if (std::popcount(octet) != ones || (hasEnded && ones != 0)) {
            return -1;
        }
        length += ones;
        hasEnded = ones != 8;
    }
    return length;
}

// OtherName: a text is the common case, as a user's principal name; other values are outlined.
void SayOtherName(const CAsn1OtherNameView& name, ca::CTextLines& lines) {
    const Octets type = name.TypeId();
    const CAsn1Element value = name.Value();
    if (type.empty() || value.raw.empty()) {
        lines.Unreadable(name.Element().raw);
        return;
    }
    const std::wstring label = ca::IsOid(type, "msUPN") ? L"UPN" : ca::OidWithName(type);
    if (ca::IsText(value)) {
        lines.Line(label, ca::Visible(ca::TextOf(value)));
        return;
    }
    if (value.tag == kAsn1OctetString) {
        lines.Line(label, ca::Hex(value.content));
        return;
    }
    lines.Line(label, L"");
    const ca::CTextLines::Level level(lines);
    ca::SayOutline(value, lines);
}

// X.400 and EDI names: a caption, then what could be read of the name; the digits of one that could
// not be read whole.
// They are rare (RFC 5280, 4.2.1.6).
void SayStructured(Sentence caption, const CAsn1Element& name, ca::CTextLines& lines) {
    lines.Line(caption, L"");
    const ca::CTextLines::Level level(lines);
    CAsn1Root<CAsn1GeneralName> read(name.raw, Asn1Blocks::kRead);
    bool isWhole = true;
    try {
        read->Decode();
    } catch (const ca::Exception&) {
        isWhole = false;
    }
    if (read->X400Address() != nullptr) {
        ca::SayOrAddress(*read->X400Address(), lines);
    }
    if (const CAsn1EdiPartyName* edi = read->EdiPartyName()) {
        if (edi->NameAssigner() != nullptr) {
            lines.Line(kMsgEdiAssigner, ca::ValueText(*edi->NameAssigner()));
        }
        if (edi->PartyName() != nullptr) {
            lines.Line(kMsgEdiParty, ca::ValueText(*edi->PartyName()));
        }
    }
    if (!isWhole) {
        lines.Unreadable(name.raw);
    }
}

void SayDirectoryName(const CAsn1Element& directory, const CAsn1Element& name,
                      ca::CTextLines& lines) {
    // The tag of a CHOICE is explicit (X.680, 31.2.7); some writers leave the SEQUENCE out.
    if (directory.tag == kAsn1Sequence || directory.tag == kAsn1Set) {
        lines.Line(kMsgDirectoryName,
                   ca::ReadableName(directory.tag == kAsn1Sequence ? directory : name));
        return;
    }
    lines.Line(kMsgDirectoryName, L"");
    const ca::CTextLines::Level level(lines);
    lines.Unreadable(name.content);
}

// The IA5String forms; what is not UTF-8 shows as U+FFFD.
std::wstring AsciiText(const CAsn1Element& name) {
    CAsn1Element text = name;
    text.tag = kAsn1Ia5String;
    return ca::Visible(ca::TextOf(text));
}

}  // namespace

namespace ca {

std::wstring IpAddressText(Octets address) {
    if (address.size() == kIpV4) {
        return IpV4Text(address);
    }
    return address.size() == kIpV6 ? IpV6Text(address) : std::wstring();
}

std::wstring IpRangeText(Octets addressAndMask) {
    if (addressAndMask.size() != 2 * kIpV4 && addressAndMask.size() != 2 * kIpV6) {
        return {};
    }
    const Octets address = addressAndMask.first(addressAndMask.size() / 2);
    const Octets mask = addressAndMask.last(addressAndMask.size() / 2);
    const int prefix = PrefixLength(mask);
    return IpAddressText(address) + L'/' +
           // A mask that is not a prefix is written out: rounding it would change what it allows.
           (prefix >= 0 ? ca::DecimalText(prefix) : IpAddressText(mask));
}

std::wstring OidWithName(Octets oid) {
    const OidInfo* info = FindOid(oid);
    if (info == nullptr) {
        return OidText(oid);
    }
    const std::wstring_view name = info->Name();
    const std::wstring_view dotted = info->dotted;
    std::wstring text;
    text.reserve(name.size() + dotted.size() + 3);
    return text.append(name).append(L" (").append(dotted).append(L")");
}

void SayGeneralName(const CAsn1GeneralNameView& name, CTextLines& lines) {
    const CAsn1Element& element = name.Element();
    switch (name.Form()) {
        case Asn1GeneralNameForm::kOtherName:
            SayOtherName(name.OtherName(), lines);
            return;
        case Asn1GeneralNameForm::kRfc822Name:
            lines.Line(L"E-mail", AsciiText(element));
            return;
        case Asn1GeneralNameForm::kDnsName:
            lines.Line(L"DNS", AsciiText(element));
            return;
        case Asn1GeneralNameForm::kX400Address:
            SayStructured(kMsgX400Address, element, lines);
            return;
        case Asn1GeneralNameForm::kDirectoryName:
            SayDirectoryName(name.DirectoryName().Element(), element, lines);
            return;
        case Asn1GeneralNameForm::kEdiPartyName:
            SayStructured(kMsgEdiPartyName, element, lines);
            return;
        case Asn1GeneralNameForm::kUri:
            lines.Line(L"URI", AsciiText(element));
            return;
        // In name constraints the same form holds a range (RFC 5280, 4.2.1.10).
        case Asn1GeneralNameForm::kIpAddress: {
            const std::wstring address = IpAddressText(element.content);
            const std::wstring range = address.empty() ? IpRangeText(element.content) : address;
            if (range.empty()) {
                lines.Unreadable(L"IP", element.content);
            } else {
                lines.Line(L"IP", range);
            }
            return;
        }
        case Asn1GeneralNameForm::kRegisteredId:
            lines.Line(kMsgRegisteredId, OidWithName(element.content));
            return;
    }
    lines.Unreadable(element.raw);  // none of the forms
}

void SayGeneralNames(const CAsn1GeneralNamesView& names, CTextLines& lines) {
    CAsn1Cursor cursor = names.Names();
    const std::size_t count = CountElements(cursor);
    CAsn1Element name;
    for (std::size_t i = 0; lines.Shows(i, count); ++i) {
        // A name that has no end hides those after it: the rest is shown by its octets.
        if (!cursor.Step(name)) {
            lines.Unreadable(cursor.Rest());
            return;
        }
        SayGeneralName(name, lines);
    }
}

}  // namespace ca
