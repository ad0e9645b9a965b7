#include "module/viewer/ViewerText.h"

#include "common/BothLanguages.h"
#include "records/text/TextLines.h"
#include "records/text/VisibleText.h"

#include <algorithm>
#include <string>

namespace {

constexpr wchar_t kCut = 0x2026;  // horizontal ellipsis

constexpr ca::BothLanguages kWords[] = {
#define VIEWER_TEXT(name, english, russian) {english, russian},
#include "module/viewer/ViewerTable.inc"
#undef VIEWER_TEXT
};

// Which form of a noun goes with a number: 1 and the others in English; 1, 21, 31..., 2 to 4, 22 to
// 24... and the others in Russian.
int FormOf(std::size_t count, bool isRussian) {
    const std::size_t ten = count % 10;
    const bool isTeen = count % 100 / 10 == 1;
    if (!isRussian) {
        return count == 1 ? 0 : 1;
    }
    return isTeen || ten == 0 || ten > 4 ? 2 : ten == 1 ? 0 : 1;
}

// The next line of `text`, which is left with what follows the line's end.
std::wstring_view TakeLine(std::wstring_view& text) {
    const std::size_t end = text.find(L'\n');
    std::wstring_view line = text.substr(0, end);
    text = end == std::wstring_view::npos ? std::wstring_view() : text.substr(end + 1);
    if (!line.empty() && line.back() == L'\r') {
        line.remove_suffix(1);
    }
    return line;
}

// UTF-16 units of the character at `index`.
int UnitsAt(const QString& text, int index) {
    const bool isPair = text[index].isHighSurrogate() && index + 1 < text.size() &&
                        text[index + 1].isLowSurrogate();
    return isPair ? 2 : 1;
}

// Whether the character at `index` stands on the one before it.
bool IsMark(const QString& text, int index) {
    const uint code = UnitsAt(text, index) == 2
                          ? QChar::surrogateToUcs4(text[index], text[index + 1])
                          : text[index].unicode();
    return QChar::category(code) <= QChar::Mark_Enclosing;
}

QString MoreMark(int count) {
    return QString::fromStdWString(ca::MoreText(static_cast<std::size_t>(count)));
}

// Units of the marks from `index` on.
int MarksAt(const QString& text, int index) {
    int end = index;
    while (end < text.size() && IsMark(text, end)) {
        end += UnitsAt(text, end);
    }
    return end - index;
}

}  // namespace

namespace ca {

QString MessageText(Sentence id) {
    return QString::fromWCharArray(SetZORNAMessage(id));
}

QString Word(ViewerWord word) {
    return QString::fromWCharArray(kWords[static_cast<std::size_t>(word)].Text());
}

QString Counted(std::size_t count, ViewerWord noun) {
    return QString::number(count) + " " +
           Word(noun).section('|', FormOf(count, IsRussian()), FormOf(count, IsRussian()));
}

QString ShownText(std::wstring_view text) {
    std::wstring shown;
    while (!text.empty()) {
        std::wstring_view line = TakeLine(text);
        for (; line.size() > kMaxValueText; line.remove_prefix(kMaxValueText)) {
            AppendShown(shown, line.substr(0, kMaxValueText));
        }
        AppendShown(shown, line);
        shown += text.empty() ? L"" : L"\n";
    }
    return QString::fromStdWString(shown);
}

QString ShownLine(std::wstring_view text, int longest) {
    const std::wstring_view line = TakeLine(text);
    const auto most = static_cast<std::size_t>(longest);
    std::wstring shown;
    AppendShown(shown, line.substr(0, most));
    if (line.size() > most || !text.empty()) {
        shown += kCut;
    }
    return LaidOut(QString::fromStdWString(shown), longest + 1);
}

QString LaidOut(const QString& text, int longest) {
    QString shown;
    int at = 0;
    while (at < text.size() && shown.size() < longest) {
        const int marks = MarksAt(text, at);
        int kept = marks != 0 ? std::min(marks, kMaxMarks) : UnitsAt(text, at);
        kept -= text[at + kept - 1].isHighSurrogate() && kept > 1 ? 1 : 0;
        shown += text.midRef(at, kept);
        if (marks > kept) {
            shown += MoreMark(marks - kept);
        }
        at += std::max(marks, UnitsAt(text, at));
    }
    return at < text.size() ? shown + MoreMark(text.size() - at) : shown;
}

QString OrDash(const QString& text) {
    return text.isEmpty() ? QString(QChar(0x2014)) : text;
}

}  // namespace ca
