#include "module/viewer/HexView.h"

#include "module/viewer/HexAccessible.h"

#include <QEvent>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <iterator>
#include <limits>

namespace {

// All in characters.
constexpr int kOffsetDigits = 8;
constexpr int kGap = 2;         // after the offset and after the digits
constexpr int kOctetWidth = 3;  // two digits and a blank
constexpr int kMargin = 4;      // pixels
// Octets in a line: the first that there is room for.
constexpr std::size_t kPerLine[] = {16, 8, 4};
constexpr std::size_t kUsual = 8;

int LineWidth(std::size_t perLine) {
    return kOffsetDigits + kGap + static_cast<int>(perLine) * (kOctetWidth + 1) + kGap;
}

}  // namespace

namespace ca {

CHexView::CHexView(QWidget* parent) : QAbstractScrollArea(parent) {
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setCursor(Qt::IBeamCursor);
    CHexAccessible::Install();
    Measure();
}

void CHexView::SetOctets(std::span<const unsigned char> octets) {
    m_octets = octets;
    m_begin = m_content = m_end = m_cursor = 0;
    verticalScrollBar()->setValue(0);
    Measure();
}

void CHexView::SetMarked(std::size_t begin, std::size_t content, std::size_t end) {
    m_end = std::min(end, m_octets.size());
    m_begin = std::min(begin, m_end);
    m_content = std::clamp(content, m_begin, m_end);
    // A cursor inside of what is marked was put there by the user.
    if (m_cursor < m_begin || m_cursor >= m_end) {
        m_cursor = m_begin;
        Reveal(m_begin);
    }
    viewport()->update();
    TellReaders();
}

QPoint CHexView::PlaceOf(std::size_t offset) const {
    return RectOf(offset).topLeft() + QPoint(m_charWidth, m_lineHeight / 2);
}

QRect CHexView::RectOf(std::size_t offset) const {
    const auto line = static_cast<int>(offset / m_perLine) - verticalScrollBar()->value();
    return {DigitsX(offset % m_perLine), line * m_lineHeight, kOctetWidth * m_charWidth,
            m_lineHeight};
}

QSize CHexView::sizeHint() const {
    constexpr int kLines = 16;
    const int frame = 2 * frameWidth() + verticalScrollBar()->sizeHint().width();
    return {LineWidth(kUsual) * m_charWidth + 2 * kMargin + frame, kLines * m_lineHeight};
}

void CHexView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), palette().base());
    const auto first = static_cast<std::size_t>(verticalScrollBar()->value());
    for (std::size_t line = 0; line <= LinesInSight(); ++line) {
        if ((first + line) * m_perLine < m_octets.size()) {
            PaintLine(painter, first + line, static_cast<int>(line) * m_lineHeight);
        }
    }
}

void CHexView::PaintLine(QPainter& painter, std::size_t line, int y) const {
    const std::size_t begin = line * m_perLine;
    const std::size_t end = std::min(begin + m_perLine, m_octets.size());
    const int x = kMargin - horizontalScrollBar()->value();
    painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
    painter.drawText(x, y + fontMetrics().ascent(),
                     QStringLiteral("%1").arg(begin, kOffsetDigits, 16, QLatin1Char('0')));
    for (std::size_t offset = begin; offset < end; ++offset) {
        PaintOctet(painter, offset, y);
    }
}

// Marked octets stand on the colour of a selection, those of identifier and length underlined too;
// a frame is round the cursor's.
void CHexView::PaintOctet(QPainter& painter, std::size_t offset, int y) const {
    const unsigned char octet = m_octets[offset];
    const std::size_t column = offset % m_perLine;
    const QRect digits(DigitsX(column) - m_charWidth / 2, y, kOctetWidth * m_charWidth,
                       m_lineHeight);
    const QRect character(CharacterX(column), y, m_charWidth, m_lineHeight);
    const bool isMarked = offset >= m_begin && offset < m_end;
    if (isMarked) {
        painter.fillRect(digits, palette().highlight());
        painter.fillRect(character, palette().highlight());
    }
    painter.setPen(palette().color(isMarked ? QPalette::HighlightedText : QPalette::Text));
    const int base = y + fontMetrics().ascent();
    painter.drawText(DigitsX(column), base,
                     QStringLiteral("%1").arg(octet, 2, 16, QLatin1Char('0')));
    painter.drawText(character.x(), base,
                     QString(octet >= 0x20 && octet < 0x7F ? QChar(octet) : QChar('.')));
    if (isMarked && offset < m_content) {
        painter.drawLine(DigitsX(column), base + 2, DigitsX(column) + 2 * m_charWidth, base + 2);
    }
    if (offset == m_cursor) {
        painter.drawRect(digits.adjusted(0, 0, -1, -1));
    }
}

void CHexView::resizeEvent(QResizeEvent*) {
    Measure();
}

void CHexView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        Measure();
    }
}

void CHexView::keyPressEvent(QKeyEvent* event) {
    const auto line = static_cast<std::ptrdiff_t>(m_perLine);
    const auto all = static_cast<std::ptrdiff_t>(m_octets.size());
    const auto page = line * static_cast<std::ptrdiff_t>(std::max<std::size_t>(LinesInSight(), 1));
    if (event->matches(QKeySequence::Copy)) {
        Q_EMIT CopyWanted();
    } else if (event->matches(QKeySequence::MoveToNextChar)) {
        MoveCursor(1);
    } else if (event->matches(QKeySequence::MoveToPreviousChar)) {
        MoveCursor(-1);
    } else if (event->matches(QKeySequence::MoveToNextLine)) {
        MoveCursor(line);
    } else if (event->matches(QKeySequence::MoveToPreviousLine)) {
        MoveCursor(-line);
    } else if (event->matches(QKeySequence::MoveToNextPage)) {
        MoveCursor(page);
    } else if (event->matches(QKeySequence::MoveToPreviousPage)) {
        MoveCursor(-page);
    } else if (event->matches(QKeySequence::MoveToStartOfLine)) {
        MoveCursor(-all);
    } else if (event->matches(QKeySequence::MoveToEndOfLine)) {
        MoveCursor(all);
    } else {
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void CHexView::mousePressEvent(QMouseEvent* event) {
    std::size_t offset = 0;
    if (event->button() == Qt::LeftButton && OctetAt(event->pos(), offset)) {
        PutCursor(offset);
    }
}

void CHexView::Measure() {
    m_charWidth = std::max(fontMetrics().horizontalAdvance(QLatin1Char('0')), 1);
    m_lineHeight = std::max(fontMetrics().lineSpacing(), 1);
    const auto fits = [this](std::size_t perLine) {
        return LineWidth(perLine) * m_charWidth + 2 * kMargin <= viewport()->width();
    };
    // The octets at the top stay there when the lines get longer or shorter.
    const std::size_t top = static_cast<std::size_t>(verticalScrollBar()->value()) * m_perLine;
    const auto* const most = std::ranges::find_if(kPerLine, fits);
    m_perLine = most != std::end(kPerLine) ? *most : kPerLine[std::size(kPerLine) - 1];
    const std::size_t lines = (m_octets.size() + m_perLine - 1) / m_perLine;
    const std::size_t hidden = lines - std::min(lines, LinesInSight());
    // Scroll bars count in int.
    constexpr auto kMost = static_cast<std::size_t>(std::numeric_limits<int>::max());
    verticalScrollBar()->setRange(0, static_cast<int>(std::min(hidden, kMost)));
    verticalScrollBar()->setPageStep(static_cast<int>(std::max<std::size_t>(LinesInSight(), 1)));
    verticalScrollBar()->setValue(static_cast<int>(top / m_perLine));
    const int width = LineWidth(m_perLine) * m_charWidth + 2 * kMargin;
    horizontalScrollBar()->setRange(0, std::max(width - viewport()->width(), 0));
    horizontalScrollBar()->setPageStep(viewport()->width());
    viewport()->update();
}

void CHexView::MoveCursor(std::ptrdiff_t distance) {
    if (m_octets.empty()) {
        return;
    }
    const auto last = static_cast<std::ptrdiff_t>(m_octets.size()) - 1;
    const auto target = static_cast<std::ptrdiff_t>(m_cursor) + distance;
    PutCursor(static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(target, 0, last)));
}

void CHexView::PutCursor(std::size_t offset) {
    if (!m_octets.empty()) {
        m_cursor = std::min(offset, m_octets.size() - 1);
        Reveal(m_cursor);
        viewport()->update();
        TellReaders();
        Q_EMIT Chosen(m_cursor);
    }
}

void CHexView::TellReaders() {
    if (QAccessible::isActive()) {
        const CHexAccessible place(this);
        QAccessibleTextCursorEvent moved(this, place.cursorPosition());
        QAccessible::updateAccessibility(&moved);
    }
}

void CHexView::Reveal(std::size_t offset) {
    const auto line = static_cast<int>(offset / m_perLine);
    const int sight = std::max(static_cast<int>(LinesInSight()), 1);
    const int top = verticalScrollBar()->value();
    if (line < top || line >= top + sight) {
        verticalScrollBar()->setValue(line - sight / 3);
    }
}

int CHexView::DigitsX(std::size_t column) const {
    const int characters = kOffsetDigits + kGap + static_cast<int>(column) * kOctetWidth;
    return kMargin + characters * m_charWidth - horizontalScrollBar()->value();
}

int CHexView::CharacterX(std::size_t column) const {
    return DigitsX(m_perLine) + (kGap - 1 + static_cast<int>(column)) * m_charWidth;
}

std::size_t CHexView::LinesInSight() const {
    return static_cast<std::size_t>(viewport()->height() / m_lineHeight);
}

bool CHexView::OctetAt(const QPoint& place, std::size_t& offset) const {
    const auto line = static_cast<std::size_t>(verticalScrollBar()->value() +
                                               std::max(place.y(), 0) / m_lineHeight);
    int column = (place.x() - DigitsX(0) + m_charWidth / 2) / (kOctetWidth * m_charWidth);
    if (place.x() >= CharacterX(0)) {
        column = (place.x() - CharacterX(0)) / m_charWidth;
    }
    if (place.x() < DigitsX(0) - m_charWidth || column >= static_cast<int>(m_perLine)) {
        return false;
    }
    offset = line * m_perLine + static_cast<std::size_t>(std::max(column, 0));
    return offset < m_octets.size();
}

}  // namespace ca
