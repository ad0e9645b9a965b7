#include "records/text/X400Text.h"

#include "asn1/Elements.h"
#include "common/DecimalText.h"
#include "records/text/DescriptionWords.h"

#include <algorithm>
#include <vector>

namespace {

using ca::CTextLines;
using ca::Octets;

// Levels of an extension attribute's value; the deepest that is defined has three.
constexpr std::size_t kMaxDepth = 8;

// Labels of the extension attributes (RFC 5280, A.1), by their number from 1 on.
constexpr const wchar_t* kExtensionLabels[] = {
    L"CN",          L"CN",        L"O",        L"PN",         L"OU",           L"DDA",
    L"PD-SYSTEM",   L"PD-C",      L"PD-CODE",  L"PD-OFFICE",  L"PD-OFFICE NO", L"PD-EXT ADDRESS",
    L"PD-PN",       L"PD-O",      L"PD-EXT",   L"PD-ADDRESS", L"PD-STREET",    L"PD-BOX",
    L"PD-RESTANTE", L"PD-UNIQUE", L"PD-LOCAL", L"NET-NUM",    L"T-TY"};

// Characters whose type an implicit tag hides; all there can be are subsets of these.
std::wstring CharactersOf(Octets octets) {
    CAsn1Element text;
    text.tag = kAsn1TeletexString;
    text.content = octets;
    return ca::Visible(ca::TextOf(text));
}

std::wstring LeafText(const CAsn1Element& leaf) {
    std::uint32_t number = 0;
    if (leaf.tag == kAsn1Integer && ca::ReadSmallInteger(leaf, number)) {
        return ca::DecimalText(number);
    }
    return ca::IsText(leaf) ? ca::Visible(ca::TextOf(leaf)) : CharactersOf(leaf.content);
}

// The texts inside a value of any shape, ", " between them; a mark ends what is not whole.
std::wstring FlatText(std::span<const unsigned char> value, CTextLines& lines) {
    std::wstring text;
    bool isTooDeep = false;
    std::vector<CAsn1Cursor> open{CAsn1Cursor(value)};
    while (!open.empty() && text.size() < ca::MaxValueText()) {
        CAsn1Element element;
        if (open.back().AtEnd() || open.back().Next(element) != Asn1Fault::kNone) {
            open.pop_back();
        } else if (!element.IsConstructed()) {
            text += text.empty() ? L"" : L", ";
            text += LeafText(element);
        } else if (open.size() < kMaxDepth) {
            open.emplace_back(element.content);
        } else {
            isTooDeep = true;
        }
    }
    if (isTooDeep) {
        lines.Fault(ca::WordText(ca::Word::kTextCut));
    }
    const bool isCut = isTooDeep || std::ranges::any_of(open, [](const CAsn1Cursor& each) {
                           return !each.AtEnd();
                       });
    return isCut ? text + L'\u2026' : text;
}

void SayMember(const wchar_t* label, const CAsn1Object* member, CTextLines& lines) {
    if (member != nullptr) {
        lines.Line(label, CharactersOf(OctetsOf(member)));
    }
}

// PersonalName (RFC 5280, A.1), with the labels that X.400 gives its parts.
void SayPerson(const CAsn1PersonalName* person, CTextLines& lines) {
    if (person != nullptr) {
        SayMember(L"S", person->Surname(), lines);
        SayMember(L"G", person->GivenName(), lines);
        SayMember(L"I", person->Initials(), lines);
        SayMember(L"Q", person->GenerationQualifier(), lines);
    }
}

// BuiltInStandardAttributes (RFC 5280, A.1).
void SayStandard(const CAsn1BuiltInStandardAttributes& standard, CTextLines& lines) {
    if (standard.CountryName() != nullptr) {
        SayMember(L"C", standard.CountryName()->Value(), lines);
    }
    if (standard.AdministrationDomainName() != nullptr) {
        SayMember(L"A", standard.AdministrationDomainName()->Value(), lines);
    }
    SayMember(L"P", standard.PrivateDomainName(), lines);
    SayMember(L"O", standard.OrganizationName(), lines);
    if (const auto* units = standard.OrganizationalUnitNames()) {
        const std::size_t count = units->Count();
        std::size_t index = 0;
        for (auto at = units->Elements(); lines.Shows(index, count) && at.Next(); ++index) {
            SayMember((L"OU" + ca::DecimalText(index + 1)).c_str(), at.Item(), lines);
        }
    }
    SayPerson(standard.PersonalName(), lines);
    SayMember(L"X.121", standard.NetworkAddress(), lines);
    SayMember(L"T-ID", standard.TerminalIdentifier(), lines);
    SayMember(L"N-ID", standard.NumericUserIdentifier(), lines);
}

// One that cannot be read is passed over: the address is said to be broken as a whole.
// Each element of a list that could be read.
template <class List, class Say>
void SayReadable(const List* list, CTextLines& lines, Say say) {
    if (list == nullptr) {
        return;
    }
    const std::size_t count = list->Count();
    std::size_t index = 0;
    for (auto at = list->Elements(); lines.Shows(index, count) && at.Next(); ++index) {
        if (at.Item() != nullptr && at.Fault() == nullptr) {
            say(*at.Item());
        }
    }
}

void SayExtension(const CAsn1ExtensionAttribute& attribute, CTextLines& lines) {
    const std::int64_t type = IntegerOf(attribute.Type(), 0);
    const std::wstring text = FlatText(attribute.Value()->Raw(), lines);
    constexpr auto kLabelCount = static_cast<std::int64_t>(std::size(kExtensionLabels));
    if (type >= 1 && type <= kLabelCount) {
        lines.Line(kExtensionLabels[type - 1], text);
    } else {
        lines.Line(L"[" + ca::DecimalText(type) + L"]", text);
    }
}

}  // namespace

namespace ca {

void SayOrAddress(const CAsn1OrAddress& address, CTextLines& lines) {
    // The order is that of the definition, which is also the one that addresses are written in.
    if (address.StandardAttributes() != nullptr) {
        SayStandard(*address.StandardAttributes(), lines);
    }
    SayReadable(address.DomainDefinedAttributes(), lines,
                [&](const CAsn1DomainDefinedAttribute& attribute) {
                    lines.Line(L"DDA:" + CharactersOf(OctetsOf(attribute.Type())),
                               CharactersOf(OctetsOf(attribute.Value())));
                });
    SayReadable(address.ExtensionAttributes(), lines,
                [&](const CAsn1ExtensionAttribute& attribute) { SayExtension(attribute, lines); });
}

}  // namespace ca
