#include "records/text/TextLines.h"

#include "common/DecimalText.h"
#include "records/text/DescriptionWords.h"
#include "records/text/OutlineText.h"

#include <algorithm>
#include <utility>

namespace ca {

namespace {

// Deeper levels stand where this one does: the indentation may not outgrow what it indents.
constexpr std::size_t kMaxIndent = 32;

// Characters that most texts have no more than: they grow once.
constexpr std::size_t kFirstRoom = 120;

}  // namespace

bool CTextLines::Start() {
    // Past the limit lines are counted, not kept: hostile values have millions.
    m_isOpen = m_text.size() < MaxValueText();
    if (!m_isOpen) {
        ++m_hidden;
        return false;
    }
    if (m_isEmpty) {
        m_text.reserve(kFirstRoom);
    } else {
        m_text += L'\n';
    }
    m_isEmpty = false;
    m_text.append(2 * std::min(m_level, kMaxIndent), L' ');
    return true;
}

void CTextLines::Line(std::wstring_view text) {
    if (Start()) {
        Append(text);
    }
}

void CTextLines::Line(std::wstring_view label, std::wstring_view value) {
    if (!Start()) {
        return;
    }
    m_text += label;
    m_text += L':';
    if (!value.empty()) {
        m_text += L' ';
        Append(value);
    }
}

void CTextLines::Block(std::wstring_view lines) {
    while (!lines.empty()) {
        // Line by line, so that each gets this level's indentation.
        const std::size_t end = std::min(lines.find(L'\n'), lines.size());
        Line(lines.substr(0, end));
        lines.remove_prefix(std::min(end + 1, lines.size()));
    }
}

void CTextLines::Append(std::wstring_view text) {
    if (m_isOpen) {
        m_text += text;
        if (IsCut(text)) {
            Fault(WordText(Word::kTextCut));
        }
    }
}

bool CTextLines::Shows(std::size_t index, std::size_t count) {
    if (index < std::min(count, kMaxListed)) {
        return true;
    }
    // Said even where the text is full: nothing is left out unsaid.
    if (index < count) {
        m_isOpen = true;
        SayMore(count - index);
    }
    return false;
}

void CTextLines::LeaveOut(std::size_t lines) {
    m_hidden += lines;
    m_isOpen = false;
}

void CTextLines::SayMore(std::size_t count) {
    if (!m_isEmpty) {
        m_text += L'\n';
    }
    m_isEmpty = false;
    m_text.append(2 * std::min(m_level, kMaxIndent), L' ');
    const std::wstring more = MoreText(count);
    m_text += more;
    Fault(more);
}

void CTextLines::GoBack(const Mark& mark) {
    m_text.resize(mark.text);
    m_faults.resize(mark.faults);
    m_level = mark.level;
    m_hidden = mark.hidden;
    m_isEmpty = mark.isEmpty;
    m_isOpen = false;
}

void CTextLines::Fault(std::wstring_view fault) {
    // Faults have a limit of their own, beside that of the text.
    if (!fault.empty() && m_faults.size() < MaxValueText()) {
        m_faults += m_faults.empty() ? L"" : L"; ";
        m_faults += fault;
    }
}

void CTextLines::Unreadable(std::span<const unsigned char> octets) {
    SayOddValue(octets, *this);
    Fault(SetZORNAMessage(kMsgAsn1Malformed));
}

void CTextLines::Unreadable(std::wstring_view label, std::span<const unsigned char> octets) {
    if (label.empty()) {
        Line(UnreadableText(octets));
        Fault(SetZORNAMessage(kMsgAsn1Malformed));
        return;
    }
    Line(label, UnreadableText(octets));
    Fault(std::wstring(label).append(L": ").append(SetZORNAMessage(kMsgAsn1Malformed)));
}

std::wstring CTextLines::TakeOr(Sentence otherwise) {
    std::wstring text = Take();
    return text.empty() ? SetZORNAMessage(otherwise) : text;
}

std::wstring CTextLines::TakeFaults() {
    return std::exchange(m_faults, {});
}

std::wstring CTextLines::Take() {
    if (m_hidden != 0) {
        // The count stands at the outermost level, since it counts lines of all of them.
        m_level = 0;
        SayMore(std::exchange(m_hidden, 0));
    }
    m_isEmpty = true;
    m_isOpen = false;
    m_text.shrink_to_fit();  // a record keeps it, and a message may have thousands
    return std::exchange(m_text, {});
}

std::wstring MoreText(std::size_t count) {
    std::wstring line = SetZORNAMessage(kMsgAndMore);
    const std::size_t place = line.find(L'N');
    if (place != std::wstring::npos) {
        line.replace(place, 1, ca::DecimalText(count));
    }
    return line;
}

}  // namespace ca
