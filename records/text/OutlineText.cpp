#include "records/text/OutlineText.h"

#include "asn1/Asn1Damage.h"
#include "asn1/Elements.h"
#include "asn1/IntegerContent.h"
#include "asn1/TagNames.h"
#include "common/DecimalText.h"
#include "records/text/DescriptionWords.h"
#include "records/text/GeneralNameText.h"
#include "records/text/TextLines.h"
#include "records/text/TimeText.h"

#include <string_view>
#include <vector>

namespace {

using ca::Octets;

// Deeper elements are not said: reading into one of indefinite length looks at all of it.
constexpr std::size_t kMaxOutlineDepth = 32;
constexpr std::wstring_view kTooDeep = L" \u2026";

// Decimal digits as far as 64 bits go; longer numbers are keys and serial numbers, shown as octets.
std::wstring IntegerText(Octets content) {
    const auto number = ca::ReadInteger(content);
    return number ? ca::DecimalText(*number) : ca::Hex(content);
}

std::wstring PrimitiveText(const CAsn1Element& element) {
    switch (element.tag) {
        case kAsn1ObjectIdentifier:
            return ca::OidWithName(element.content);
        case kAsn1UtcTime:
        case kAsn1GeneralizedTime:
            return ca::TimeLine(element);
        case kAsn1Integer:
        case kAsn1Enumerated:
            return IntegerText(element.content);
        case kAsn1Boolean:
            // A BOOLEAN of no octets never comes here: it is said by its tag alone.
            return element.content[0] != 0 ? L"TRUE" : L"FALSE";
        case kAsn1BitString:
            return ca::Hex(ca::BitOctets(element));
        default:
            return ca::IsText(element) ? ca::Visible(ca::TextOf(element))
                                       : ca::Hex(element.content);
    }
}

// Says elements with all that is inside, a line each; past kMaxListed they are counted.
class COutline {
  public:
    void Say(const CAsn1Element& element) {
        SayOne(element, 0);
        // What is left to say of each open element, outermost first; kMaxOutlineDepth bounds it.
        std::vector<CAsn1Cursor> open;
        if (element.IsConstructed()) {
            open.emplace_back(element.content);
        }
        while (!open.empty()) {
            CAsn1Element child;
            if (open.back().AtEnd()) {
                open.pop_back();
                continue;
            }
            if (open.back().Next(child) != Asn1Fault::kNone) {
                m_lines.SetLevel(open.size());
                m_lines.Unreadable({}, open.back().Rest());
                open.pop_back();
                continue;
            }
            SayOne(child, open.size());
            if (child.IsConstructed() && open.size() < kMaxOutlineDepth) {
                open.emplace_back(child.content);
            } else if (child.IsConstructed()) {
                m_lines.Append(kTooDeep);
                m_isCut = true;
            }
        }
    }
    // Hands over what was said.
    void SayTo(ca::CTextLines& lines) {
        lines.Block(m_lines.Take());
        lines.Fault(m_lines.TakeFaults());
        if (m_isCut) {
            lines.Fault(ca::WordText(ca::Word::kTextCut));
        }
    }

  private:
    void SayOne(const CAsn1Element& element, std::size_t level) {
        // Said by number at the end: the lines of an outline are bounded, its elements are not.
        if (m_said == ca::kMaxListed) {
            m_lines.LeaveOut(1);
            return;
        }
        ++m_said;
        m_lines.SetLevel(level);
        if (element.IsConstructed() || element.content.empty()) {
            m_lines.Line(ca::OutlineTagText(element.tag));
        } else {
            m_lines.Line(ca::OutlineTagText(element.tag), PrimitiveText(element));
        }
    }

    ca::CTextLines m_lines;
    std::size_t m_said = 0;
    bool m_isCut = false;
};

// Says elements one after the other; false, and says nothing, for octets that are not.
bool SayElements(Octets octets, ca::CTextLines& lines) {
    if (octets.empty() || !ca::IsWellFormed(octets)) {
        return false;
    }
    CAsn1Cursor cursor(octets);
    COutline outline;
    CAsn1Element element;
    while (!cursor.AtEnd() && cursor.Next(element) == Asn1Fault::kNone) {
        outline.Say(element);
    }
    outline.SayTo(lines);
    if (!cursor.AtEnd()) {  // well-formed, but with a tag that no class has
        lines.Unreadable({}, cursor.Rest());
    }
    return true;
}

}  // namespace

namespace ca {

void SayOutline(const CAsn1Element& element, CTextLines& lines) {
    COutline outline;
    outline.Say(element);
    outline.SayTo(lines);
}

std::wstring UnreadableText(Octets octets) {
    std::wstring text = SetZORNAMessage(kMsgUnreadable);
    AppendHex(text, octets);
    return text;
}

void SayUnknownValue(Octets octets, CTextLines& lines) {
    // Not elements, so that digits are all that can be said.
    if (!SayElements(octets, lines)) {
        lines.Block(Hex(octets));
    }
}

void SayOddValue(Octets octets, CTextLines& lines) {
    CTextLines outline;
    if (!SayElements(octets, outline)) {
        lines.Line(UnreadableText(octets));
        return;
    }
    const std::wstring caption = SetZORNAMessage(kMsgUnreadable);
    const std::wstring text = outline.Take();
    lines.Fault(outline.TakeFaults());
    // One line goes beside the caption, more go below it.
    if (text.find(L'\n') == std::wstring::npos) {
        lines.Line(caption + text);
        return;
    }
    lines.Line(std::wstring_view(caption).substr(0, caption.find_last_not_of(L' ') + 1));
    const CTextLines::Level level(lines);
    lines.Block(text);
}

}  // namespace ca
