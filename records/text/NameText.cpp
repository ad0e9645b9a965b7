#include "records/text/NameText.h"

#include "asn1/OidTable.h"
#include "common/Encode.h"
#include "records/text/Elements.h"
#include "records/text/TextLines.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace {

using ca::Octets;

// Types that RFC 4514 3 names, and the identity attributes of the Russian certificate profile,
// which readers must find by name in every form.
struct X500Row {
    std::wstring_view dotted;
    std::wstring_view keyword;
};
constexpr std::size_t kUsualText = 120;  // characters of most names

constexpr X500Row kX500Keywords[] = {
    {L"2.5.4.3", L"CN"},
    {L"2.5.4.7", L"L"},
    {L"2.5.4.8", L"ST"},
    {L"2.5.4.10", L"O"},
    {L"2.5.4.11", L"OU"},
    {L"2.5.4.6", L"C"},
    {L"2.5.4.9", L"STREET"},
    {L"0.9.2342.19200300.100.1.25", L"DC"},
    {L"1.2.643.3.131.1.1", L"INN"},
    {L"0.9.2342.19200300.100.1.1", L"UID"},
    {L"1.2.643.100.1", L"OGRN"},
    {L"1.2.643.100.3", L"SNILS"},
    {L"1.2.643.100.4", L"INNLE"},
    {L"1.2.643.100.5", L"OGRNIP"},
};

struct Attribute {
    CAsn1Element value;
    const ca::OidInfo* info;  // null for a type without a name
    std::wstring ownDotted;   // of such a type
    std::wstring text;        // "" when the value is none
    std::wstring escaped;     // the value with what is hidden made visible, where that differs
    bool startsRdn;

    std::wstring_view Dotted() const {
        return info != nullptr ? std::wstring_view(info->dotted) : ownDotted;
    }
    const std::wstring& Shown() const { return escaped.empty() ? text : escaped; }
};

// Appends a text, its special characters by escape(index), all between them as it stands.
template <class IsSpecial, class Escape>
void AppendEscaped(std::wstring& out, std::wstring_view text, IsSpecial isSpecial, Escape escape) {
    std::size_t from = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isSpecial(text[i])) {
            out += text.substr(from, i - from);
            escape(i);
            from = i + 1;
        }
    }
    out += text.substr(from);
}

void AppendShortName(std::wstring& out, const Attribute& attribute) {
    if (attribute.info == nullptr) {
        out += attribute.ownDotted;
        return;
    }
    const std::string_view name = attribute.info->shortName;
    out.append(name.begin(), name.end());
}

void AppendQuoted(std::wstring& out, const std::wstring& value) {
    const auto isSpecial = [](wchar_t c) { return c == L',' || c == L'+' || c == L'"'; };
    const bool needsQuotes =
        value.starts_with(L' ') || value.ends_with(L' ') || std::ranges::any_of(value, isSpecial);
    if (!needsQuotes) {
        out += value;
        return;
    }
    out += L'"';
    AppendEscaped(
        out, value, [](wchar_t c) { return c == L'"'; }, [&out](std::size_t) { out += L"\"\""; });
    out += L'"';
}

// A line end has its own escape in the tag list; every other hidden character is shown as \uXXXX,
// whose backslash is not one of the value's.
void AppendTagText(std::wstring& out, const Attribute& attribute) {
    if (!ca::IsText(attribute.value)) {
        out += attribute.escaped;
        return;
    }
    const auto text = std::wstring_view(attribute.text).substr(0, ca::kMaxValueText);
    AppendEscaped(
        out, text,
        [](wchar_t c) { return c == L'\\' || c == L';' || c == L'=' || ca::IsHiddenCharacter(c); },
        [&out, text](std::size_t i) {
            if (text[i] == L'\n') {
                out += L"\\n";
            } else if (ca::IsHiddenCharacter(text[i])) {
                ca::AppendVisible(out, text.substr(i, 1));
            } else {
                out += L'\\';
                out += text[i];
            }
        });
}

// The UTF-8 octets of a character as "\xx". A NUL, where the conversion would end, is one of them.
void AppendEscapedOctets(std::wstring& out, wchar_t c) {
    const std::string octets = c == L'\0' ? std::string(1, '\0') : ca::u16u8(std::wstring(1, c));
    for (const char octet : octets) {
        const auto value = static_cast<unsigned char>(octet);
        out += L'\\';
        ca::AppendHex(out, {&value, 1});
    }
}

// RFC 4514 2.4: backslash before the special characters, hexadecimal pairs of the UTF-8 octets for
// what would not show.
void AppendX500Text(std::wstring& out, std::wstring_view text) {
    const auto isSpecial = [](wchar_t c) {
        switch (c) {
            case L'"':
            case L'+':
            case L',':
            case L';':
            case L'<':
            case L'>':
            case L'\\':
            case L' ':
            case L'#':
                return true;
            default:
                return ca::IsHiddenCharacter(c);
        }
    };
    AppendEscaped(out, text, isSpecial, [&out, text](std::size_t i) {
        const wchar_t c = text[i];
        if (ca::IsHiddenCharacter(c)) {
            AppendEscapedOctets(out, c);
            return;
        }
        const bool isInner = i != 0 && i + 1 != text.size();
        if (!(c == L' ' && isInner) && !(c == L'#' && i != 0)) {
            out += L'\\';
        }
        out += c;
    });
}

void AppendX500(std::wstring& out, const Attribute& attribute) {
    const auto* row = std::ranges::find(kX500Keywords, attribute.Dotted(), &X500Row::dotted);
    const bool isKnown = row != std::end(kX500Keywords);
    out += isKnown ? row->keyword : attribute.Dotted();
    if (!isKnown || !ca::IsText(attribute.value)) {
        out += L"=#";
        ca::AppendHex(out, attribute.value.raw);
        return;
    }
    out += L'=';
    AppendX500Text(out, std::wstring_view(attribute.text).substr(0, ca::kMaxValueText));
}

struct Collected {
    std::vector<Attribute> attributes;  // in encoded order, at most kMaxListed
    std::size_t hidden = 0;             // how many more there are
    bool isWhole = true;                // nothing in the name is no attribute
};

Attribute ReadAttribute(Octets type, const CAsn1Element& value, bool startsRdn) {
    Attribute attribute{value, ca::FindOid(type), {}, {}, {}, startsRdn};
    if (attribute.info == nullptr) {
        attribute.ownDotted = ca::OidText(type);
    }
    if (!ca::IsText(value)) {
        attribute.escaped = ca::ValueText(value);
        return attribute;
    }
    attribute.text = ca::TextOf(value);
    if (attribute.text.size() > ca::kMaxValueText ||
        std::ranges::any_of(attribute.text, ca::IsHiddenCharacter)) {
        attribute.escaped = ca::Visible(attribute.text);
    }
    return attribute;
}

// The attributes of one SET OF SEQUENCE { type, value }.
void CollectRdn(const CAsn1Element& rdn, Collected& found) {
    bool startsRdn = true;
    CAsn1Element pair;
    for (CAsn1Cursor pairs(rdn.content); !pairs.AtEnd();) {
        if (pairs.Next(pair) != Asn1Fault::kNone) {
            found.isWhole = false;
            return;
        }
        const Octets type = ca::ContentIf(ca::Child(pair, 0), kAsn1ObjectIdentifier);
        const CAsn1Element value = ca::Child(pair, 1);
        if (type.empty() || value.raw.empty()) {
            found.isWhole = false;
            continue;
        }
        if (found.attributes.size() == ca::kMaxListed) {
            ++found.hidden;
            continue;
        }
        found.attributes.push_back(ReadAttribute(type, value, startsRdn));
        startsRdn = false;
    }
}

Collected CollectAttributes(const CAsn1Element& name) {
    Collected found;
    found.isWhole = name.tag == kAsn1Sequence || (name.tag & 0xE0U) == ca::ContextConstructed(0);
    CAsn1Cursor names(found.isWhole ? name.content : std::span<unsigned char>());
    while (!names.AtEnd()) {
        CAsn1Element rdn;
        if (names.Next(rdn) != Asn1Fault::kNone) {
            found.isWhole = false;
            break;
        }
        if (rdn.tag != kAsn1Set || rdn.content.empty()) {
            found.isWhole = false;
        } else {
            CollectRdn(rdn, found);
        }
    }
    return found;
}

void AppendJoint(std::wstring& out, const Attribute& attribute) {
    if (!out.empty()) {
        out += attribute.startsRdn ? L", " : L" + ";
    }
}

void AppendReadable(std::wstring& out, const Attribute& attribute) {
    AppendJoint(out, attribute);
    AppendShortName(out, attribute);
    out += L'=';
    AppendQuoted(out, attribute.Shown());
}

void AppendOid(std::wstring& out, const Attribute& attribute) {
    AppendJoint(out, attribute);
    out += attribute.Dotted();
    out += L'=';
    AppendQuoted(out, attribute.Shown());
}

std::wstring ReadableText(const Collected& found) {
    std::wstring text;
    text.reserve(kUsualText);
    for (const Attribute& attribute : found.attributes) {
        if (text.size() > ca::kMaxValueText) {
            text += L"\u2026";
            break;
        }
        AppendReadable(text, attribute);
    }
    return text;
}

// Whole RDNs from the last to the first, their attributes in encoded order.
std::wstring X500Text(const std::vector<Attribute>& attributes) {
    std::wstring out;
    std::size_t end = attributes.size();
    while (end != 0) {
        std::size_t begin = end - 1;
        while (begin != 0 && !attributes[begin].startsRdn) {
            --begin;
        }
        for (std::size_t i = begin; i < end; ++i) {
            if (!out.empty()) {
                out += i == begin ? L',' : L'+';
            }
            AppendX500(out, attributes[i]);
        }
        end = begin;
    }
    return out;
}

}  // namespace

namespace ca {

NameForms DescribeName(const CAsn1Element& name) {
    const Collected found = CollectAttributes(name);
    NameForms forms;
    if (!found.isWhole) {
        forms.error = SetZORNAMessage(kMsgNameUnreadable);
    }
    for (std::wstring* form : {&forms.readable, &forms.oid}) {
        form->reserve(kUsualText);
    }
    for (const Attribute& attribute : found.attributes) {
        AppendReadable(forms.readable, attribute);
        AppendOid(forms.oid, attribute);
        AppendShortName(forms.tags, attribute);
        forms.tags += L'=';
        AppendTagText(forms.tags, attribute);
        forms.tags += L';';
    }
    forms.x500 = X500Text(found.attributes);
    if (found.hidden != 0) {
        const std::wstring more = L", " + MoreText(found.hidden);
        forms.readable += more;
        forms.oid += more;
    }
    return forms;
}

std::wstring ReadableName(const CAsn1Element& name) {
    return ReadableText(CollectAttributes(name));
}

std::wstring ReadableRdn(const CAsn1Element& rdn) {
    Collected found;
    CollectRdn(rdn, found);
    return ReadableText(found);
}

}  // namespace ca
