#include "module/viewer/ViewerText.h"

#include "records/text/VisibleText.h"

#include <string>

namespace {

constexpr wchar_t kCut = 0x2026;  // horizontal ellipsis

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

}  // namespace

namespace ca {

QString MessageText(ZornaMessage id) {
    return QString::fromWCharArray(SetZORNAMessage(id));
}

QString ShownText(std::wstring_view text) {
    const bool isCut = text.size() > kMaxValueText;
    text = text.substr(0, kMaxValueText);
    std::wstring shown;
    while (!text.empty()) {
        shown += shown.empty() ? L"" : L"\n";
        AppendVisible(shown, TakeLine(text));
    }
    if (isCut) {
        shown += kCut;
    }
    return QString::fromStdWString(shown);
}

QString ShownLine(std::wstring_view text, std::size_t longest) {
    const std::wstring_view line = TakeLine(text);
    std::wstring shown = Visible(line.substr(0, longest));
    if (line.size() > longest || !text.empty()) {
        shown += kCut;
    }
    return QString::fromStdWString(shown);
}

QString OrDash(const QString& text) {
    return text.isEmpty() ? QString(QChar(0x2014)) : text;
}

}  // namespace ca
