#include "module/viewer/HexAccessible.h"

#include "common/Hex.h"

#include <algorithm>
#include <limits>

namespace {

constexpr int kOctetWidth = 3;    // two digits and a blank
constexpr int kMaxText = 100000;  // characters handed out at once

QAccessibleInterface* MakeInterface(const QString& className, QObject* object) {
    auto* const view =
        className == QLatin1String("ca::CHexView") ? qobject_cast<ca::CHexView*>(object) : nullptr;
    return view != nullptr ? new ca::CHexAccessible(view) : nullptr;  // Qt owns it
}

}  // namespace

namespace ca {

CHexAccessible::CHexAccessible(CHexView* view)
    : QAccessibleWidget(view, QAccessible::EditableText) {}

void CHexAccessible::Install() {
    QAccessible::installFactory(&MakeInterface);  // once, however often it is asked to
}

void* CHexAccessible::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface*>(this)
                                              : QAccessibleWidget::interface_cast(type);
}

QAccessible::State CHexAccessible::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = true;
    state.multiLine = true;
    state.selectableText = true;
    return state;
}

QString CHexAccessible::text(QAccessible::Text kind) const {
    if (kind != QAccessible::Value || View().Octets().empty()) {
        return QAccessibleWidget::text(kind);
    }
    const int place = cursorPosition();
    return QStringLiteral("%1: %2")
        .arg(View().Cursor(), 8, 16, QLatin1Char('0'))
        .arg(text(place, place + kOctetWidth - 1));
}

void CHexAccessible::selection(int, int* begin, int* end) const {
    *begin = static_cast<int>(View().MarkedBegin()) * kOctetWidth;
    *end = static_cast<int>(View().MarkedEnd()) * kOctetWidth;
}

int CHexAccessible::selectionCount() const {
    return View().MarkedBegin() < View().MarkedEnd() ? 1 : 0;
}

int CHexAccessible::cursorPosition() const {
    return static_cast<int>(View().Cursor()) * kOctetWidth;
}

void CHexAccessible::setCursorPosition(int position) {
    View().PutCursor(static_cast<std::size_t>(std::max(position, 0) / kOctetWidth));
}

QString CHexAccessible::text(int begin, int end) const {
    const std::span<const unsigned char> octets = View().Octets();
    QString text;
    const int stop = std::min({end, characterCount(), begin + kMaxText});
    for (int at = std::max(begin, 0); at < stop; ++at) {
        const unsigned char octet = octets[static_cast<std::size_t>(at / kOctetWidth)];
        const int digit = at % kOctetWidth;
        text += QLatin1Char(digit == 0   ? HexDigit(octet >> 4U)
                            : digit == 1 ? HexDigit(octet)
                                         : ' ');
    }
    return text;
}

// Characters of a part: one, an octet, a line, everything.
int CHexAccessible::PartSize(QAccessible::TextBoundaryType boundary) const {
    switch (boundary) {
        case QAccessible::CharBoundary:
            return 1;
        case QAccessible::WordBoundary:
            return kOctetWidth;
        case QAccessible::NoBoundary:
            return std::max(characterCount(), 1);
        default:
            return static_cast<int>(View().PerLine()) * kOctetWidth;
    }
}

QString CHexAccessible::Part(int number, int size, int* begin, int* end) const {
    const int all = characterCount();
    *begin = std::clamp(number < 0 ? 0 : number * size, 0, all);
    *end = number < 0 ? 0 : std::min(*begin + size, all);
    return text(*begin, *end);
}

QString CHexAccessible::textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary,
                                         int* begin, int* end) const {
    return Part(offset / PartSize(boundary) - 1, PartSize(boundary), begin, end);
}

QString CHexAccessible::textAfterOffset(int offset, QAccessible::TextBoundaryType boundary,
                                        int* begin, int* end) const {
    return Part(offset / PartSize(boundary) + 1, PartSize(boundary), begin, end);
}

QString CHexAccessible::textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* begin,
                                     int* end) const {
    return Part(offset / PartSize(boundary), PartSize(boundary), begin, end);
}

int CHexAccessible::characterCount() const {
    constexpr auto kMost = static_cast<std::size_t>(std::numeric_limits<int>::max());
    return static_cast<int>(std::min(View().Octets().size() * kOctetWidth, kMost));
}

QRect CHexAccessible::characterRect(int offset) const {
    const QRect octet = View().RectOf(static_cast<std::size_t>(std::max(offset, 0) / kOctetWidth));
    const int width = octet.width() / kOctetWidth;
    return {
        View().viewport()->mapToGlobal(octet.topLeft()) + QPoint(width * (offset % kOctetWidth), 0),
        QSize(width, octet.height())};
}

int CHexAccessible::offsetAtPoint(const QPoint& point) const {
    std::size_t offset = 0;
    const bool isOctet = View().OctetAt(View().viewport()->mapFromGlobal(point), offset);
    return isOctet ? static_cast<int>(offset) * kOctetWidth : -1;
}

void CHexAccessible::scrollToSubstring(int begin, int) {
    View().Reveal(static_cast<std::size_t>(std::max(begin, 0) / kOctetWidth));
}

QString CHexAccessible::attributes(int offset, int* begin, int* end) const {
    *begin = offset;
    *end = offset;
    return {};
}

}  // namespace ca
