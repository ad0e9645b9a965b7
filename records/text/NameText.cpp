#include "records/text/NameText.h"

#include "asn1/Elements.h"
#include "asn1/Oid.h"
#include "common/Encode.h"
#include "records/AnswerBudget.h"
#include "records/text/DescriptionWords.h"
#include "records/text/TextLines.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace {

using ca::Octets;

// Types that RFC 4514, 3 names, and the identity attributes of the Russian certificate profile,
// which readers must find by name in every form.
struct X500Row {
    ca::COid type;
    std::wstring_view keyword;
};
constexpr std::size_t kUsualText = 120;  // characters of most names

constexpr X500Row kX500Keywords[] = {
    {"CN", L"CN"},       {"L", L"L"},           {"ST", L"ST"},         {"O", L"O"},
    {"OU", L"OU"},       {"C", L"C"},           {"street", L"STREET"}, {"DC", L"DC"},
    {"INN", L"INN"},     {"UID", L"UID"},       {"OGRN", L"OGRN"},     {"SNILS", L"SNILS"},
    {"INNLE", L"INNLE"}, {"OGRNIP", L"OGRNIP"},
};

struct Attribute {
    CAsn1Element value;
    const ca::OidInfo* info;  // null for a type without a name
    std::wstring ownDotted;   // of such a type
    std::wstring text;        // "" when the value is none
    std::wstring escaped;     // as it is shown, where that differs
    bool startsRdn;
    bool isCut;  // not all of it is shown

    std::wstring_view Dotted() const {
        return info != nullptr ? std::wstring_view(info->dotted) : ownDotted;
    }
    const std::wstring& Shown() const { return escaped.empty() ? text : escaped; }
};

// A form as it is made; what is beyond its most characters is cut, with a mark.
class CForm {
  public:
    explicit CForm(std::size_t most) : m_most(most) {
        m_text.reserve(kUsualText);  // most names grow once
    }

    void operator+=(wchar_t c) { *this += std::wstring_view(&c, 1); }
    void operator+=(std::wstring_view text) {
        const std::size_t room = m_most - m_text.size();
        m_isCut = m_isCut || text.size() > room;
        m_text += text.substr(0, room);
    }
    void AppendHex(Octets octets) { *this += ca::Hex(octets); }

    bool IsEmpty() const { return m_text.empty(); }
    bool IsCut() const { return m_isCut; }
    std::size_t Size() const { return m_text.size(); }
    std::wstring Take() {
        m_text += m_isCut ? L"\u2026" : L"";
        return std::move(m_text);
    }

  private:
    std::wstring m_text;
    std::size_t m_most;
    bool m_isCut = false;
};

// Appends a text, its special characters by escape(index), all between them as it stands.
template <class IsSpecial, class Escape>
void AppendEscaped(CForm& out, std::wstring_view text, IsSpecial isSpecial, Escape escape) {
    std::size_t from = 0;
    for (std::size_t i = 0; i < text.size() && !out.IsCut(); ++i) {
        if (isSpecial(text[i])) {
            out += text.substr(from, i - from);
            escape(i);
            from = i + 1;
        }
    }
    out += text.substr(from);
}

// Types without a name show their numbers, which tells them apart as well.
void AppendShortName(CForm& out, const Attribute& attribute) {
    if (attribute.info == nullptr) {
        out += attribute.ownDotted;
        return;
    }
    for (const char c : std::string_view(attribute.info->shortName)) {
        out += static_cast<wchar_t>(c);
    }
}

// A comma, a plus sign or a quote would read as the end of a value; quotes inside stand twice.
void AppendQuoted(CForm& out, const std::wstring& value) {
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

// A line end has its own escape in the tag list. Every other hidden character, and the first of
// what would read as octets, is shown as \uXXXX, whose backslash is not one of the value's: those
// stand twice. So a reader takes "n" after a backslash as a line end, "u" and "U" with their
// digits as a character, anything else as it stands.
void AppendTagText(CForm& out, const Attribute& attribute) {
    if (!ca::IsText(attribute.value)) {
        out += attribute.escaped;
        return;
    }
    const auto text = std::wstring_view(attribute.text).substr(0, ca::MaxValueText());
    const bool readsAsOctets = ca::ReadsAsOctets(text);
    AppendEscaped(
        out, text,
        [readsAsOctets](wchar_t c) {
            return c == L'\\' || c == L';' || c == L'=' || ca::IsHiddenCharacter(c) ||
                   (c == L'#' && readsAsOctets);
        },
        [&out, text](std::size_t i) {
            if (text[i] == L'\n') {
                out += L"\\n";
            } else if (ca::IsHiddenCharacter(text[i]) || text[i] == L'#') {
                out += ca::EscapeText(text[i]);
            } else {
                out += L'\\';
                out += text[i];
            }
        });
}

// The UTF-8 octets of a character as "\xx". A NUL, where the conversion would end, is one of them.
void AppendEscapedOctets(CForm& out, wchar_t c) {
    const std::string octets = c == L'\0' ? std::string(1, '\0') : ca::u16u8(std::wstring(1, c));
    for (const char octet : octets) {
        const auto value = static_cast<unsigned char>(octet);
        out += L'\\';
        out.AppendHex({&value, 1});
    }
}

// RFC 4514, 2.4: backslash before the special characters, hexadecimal pairs of the UTF-8 octets for
// what would not show.
void AppendX500Text(CForm& out, std::wstring_view text) {
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
        // A space needs its backslash at the ends only, "#" at the beginning (RFC 4514, 2.4).
        const bool isInner = i != 0 && i + 1 != text.size();
        if (!(c == L' ' && isInner) && !(c == L'#' && i != 0)) {
            out += L'\\';
        }
        out += c;
    });
}

void AppendX500(CForm& out, const Attribute& attribute) {
    const auto* row = std::ranges::find_if(
        kX500Keywords, [&](const X500Row& each) { return each.type == attribute.info; });
    const bool isKnown = row != std::end(kX500Keywords);
    out += isKnown ? row->keyword : attribute.Dotted();
    // A type by its number, or a value that is not a text, goes as "#" and the octets of its BER
    // (RFC 4514, 2.4).
    if (!isKnown || !ca::IsText(attribute.value)) {
        out += L"=#";
        out.AppendHex(attribute.value.raw);
        return;
    }
    out += L'=';
    AppendX500Text(out, std::wstring_view(attribute.text).substr(0, ca::MaxValueText()));
}

struct Collected {
    std::vector<Attribute> attributes;  // in encoded order
    std::size_t characters = 0;         // of what they show
    std::size_t hidden = 0;             // how many more there are
    bool isWhole = true;                // all in the name are attributes

    // As many as a list shows, and no more than one over what a value may have of characters.
    bool IsFull() const {
        return attributes.size() == ca::kMaxListed || characters > ca::MaxValueText();
    }

    // What the forms do not say; "" when they say all.
    // \param isCut  when one of them ends before its name does.
    std::wstring Faults(bool isCut) const {
        std::wstring faults = isWhole ? L"" : SetZORNAMessage(kMsgNameUnreadable);
        const auto add = [&faults](const std::wstring& fault) {
            faults += (faults.empty() ? L"" : L"; ") + fault;
        };
        if (hidden != 0) {
            add(ca::MoreText(hidden));
        }
        if (isCut || std::ranges::any_of(attributes, &Attribute::isCut)) {
            add(ca::WordText(ca::Word::kTextCut));
        }
        return faults;
    }
};

Attribute ReadAttribute(Octets type, const CAsn1Element& value, bool startsRdn) {
    Attribute attribute{value, ca::FindOid(type), {}, {}, {}, startsRdn, /*isCut=*/false};
    if (attribute.info == nullptr) {
        attribute.ownDotted = ca::OidText(type);
    }
    if (!ca::IsText(value)) {
        attribute.escaped = ca::ValueText(value);
        attribute.isCut = ca::IsCut(attribute.escaped);
        return attribute;
    }
    attribute.text = ca::TextOf(value);
    const auto mayNeedEscape = [](wchar_t c) {
        return c == L'\\' || c == L'#' || ca::IsHiddenCharacter(c);
    };
    if (attribute.text.size() > ca::MaxValueText() ||
        std::ranges::any_of(attribute.text, mayNeedEscape)) {
        attribute.escaped = ca::ValueText(attribute.text);
        attribute.isCut =
            attribute.text.size() > ca::MaxValueText() || ca::IsCut(attribute.escaped);
    }
    return attribute;
}

// RelativeDistinguishedName ::= SET OF AttributeTypeAndValue (RFC 5280, 4.1.2.4).
void CollectRdn(const CAsn1RdnView& rdn, Collected& found) {
    bool startsRdn = true;
    CAsn1Element pair;
    CAsn1Cursor pairs = rdn.Attributes();
    while (pairs.Step(pair)) {
        const CAsn1TypeAndValueView attribute(pair);
        const Octets type = attribute.Type();
        const CAsn1Element value = attribute.Value();
        if (type.empty() || value.raw.empty()) {
            found.isWhole = false;
            continue;
        }
        // Counted on: the name says how many it does not show.
        if (found.IsFull()) {
            ++found.hidden;
            continue;
        }
        found.attributes.push_back(ReadAttribute(type, value, startsRdn));
        found.characters += found.attributes.back().Shown().size();
        startsRdn = false;
    }
    found.isWhole = found.isWhole && pairs.AtEnd();
}

Collected CollectAttributes(const CAsn1NameView& name) {
    Collected found;
    found.isWhole = name.IsName();
    CAsn1Cursor rdns = found.isWhole ? name.Rdns() : CAsn1Cursor();
    CAsn1Element rdn;
    while (rdns.Step(rdn)) {
        // An empty SET is not an RDN (SIZE (1..MAX)).
        if (rdn.tag != kAsn1Set || rdn.content.empty()) {
            found.isWhole = false;
        } else {
            CollectRdn(rdn, found);
        }
    }
    found.isWhole = found.isWhole && rdns.AtEnd();
    return found;
}

// The attributes of one RDN belong together, which the joint shows.
void AppendJoint(CForm& out, const Attribute& attribute) {
    if (!out.IsEmpty()) {
        out += attribute.startsRdn ? L", " : L" + ";
    }
}

void AppendReadable(CForm& out, const Attribute& attribute) {
    AppendJoint(out, attribute);
    AppendShortName(out, attribute);
    out += L'=';
    AppendQuoted(out, attribute.Shown());
}

void AppendOid(CForm& out, const Attribute& attribute) {
    AppendJoint(out, attribute);
    out += attribute.Dotted();
    out += L'=';
    AppendQuoted(out, attribute.Shown());
}

void AppendTag(CForm& out, const Attribute& attribute) {
    AppendShortName(out, attribute);
    out += L'=';
    AppendTagText(out, attribute);
    out += L';';
}

std::wstring ReadableText(const Collected& found) {
    CForm text(SIZE_MAX);
    for (const Attribute& attribute : found.attributes) {
        // A line of a text is no place for a whole page; the forms of a record have room for more.
        if (text.Size() > ca::MaxValueText()) {
            return text.Take() + L"\u2026";
        }
        AppendReadable(text, attribute);
    }
    return found.hidden != 0 ? text.Take() + L", " + ca::MoreText(found.hidden) : text.Take();
}

// RFC 4514, 2.1 and 2.2.
// Whole RDNs from the last to the first, their attributes in encoded order.
void AppendAllX500(CForm& out, const Collected& found) {
    const std::vector<Attribute>& attributes = found.attributes;
    std::size_t end = attributes.size();
    while (end != 0) {
        std::size_t begin = end - 1;
        while (begin != 0 && !attributes[begin].startsRdn) {
            --begin;
        }
        for (std::size_t i = begin; i < end; ++i) {
            if (!out.IsEmpty()) {
                out += i == begin ? L',' : L'+';
            }
            AppendX500(out, attributes[i]);
        }
        end = begin;
    }
}

}  // namespace

namespace ca {

NameForms DescribeName(const CAsn1NameView& name) {
    const Collected found = CollectAttributes(name);
    NameForms forms;
    const std::wstring more = found.hidden != 0 ? L", " + MoreText(found.hidden) : std::wstring();
    bool isCut = false;
    // The forms share what an answer may still have.
    // Each character is four octets in memory and up to four in the answer.
    constexpr std::size_t kOctetsPerCharacter = 8;
    std::size_t left = CAnswerBudget::Left() / kOctetsPerCharacter;
    const auto make = [&](auto append) {
        CForm form(left);
        append(form);
        left -= form.Size();
        isCut = isCut || form.IsCut();
        return form.Take();
    };
    const auto inOrder = [&](void (*append)(CForm & out, const Attribute& attribute)) {
        return make([&](CForm& out) {
            for (const Attribute& attribute : found.attributes) {
                append(out, attribute);
            }
        });
    };
    // The readable form first: where the budget ends, the later ones are cut.
    forms.readable = inOrder(AppendReadable) + more;
    forms.oid = inOrder(AppendOid) + more;
    forms.x500 = make([&](CForm& out) { AppendAllX500(out, found); });
    forms.tags = inOrder(AppendTag);
    forms.error = found.Faults(isCut);
    return forms;
}

std::wstring ReadableName(const CAsn1NameView& name) {
    return ReadableText(CollectAttributes(name));
}

std::wstring ReadableRdn(const CAsn1RdnView& rdn) {
    Collected found;
    CollectRdn(rdn, found);
    return ReadableText(found);
}

}  // namespace ca
