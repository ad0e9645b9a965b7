#include "module/viewer/TextBox.h"

#include <QEvent>
#include <QFontMetrics>
#include <QTextBlock>
#include <QTextOption>

#include <algorithm>

namespace {

constexpr int kMostLines = 8;

}  // namespace

namespace ca {

CTextBox::CTextBox(QWidget* parent) : QPlainTextEdit(parent) {
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    setFrameShape(QFrame::NoFrame);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    document()->setDocumentMargin(0);
    viewport()->setAutoFillBackground(false);
    FitHeight();
}

void CTextBox::SetText(const QString& text) {
    setPlainText(text);
    FitHeight();
}

void CTextBox::resizeEvent(QResizeEvent* event) {
    QPlainTextEdit::resizeEvent(event);
    FitHeight();
}

void CTextBox::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        FitHeight();
    }
}

void CTextBox::FitHeight() {
    const qreal line = QFontMetricsF(font()).lineSpacing();
    qreal height = 0;
    for (QTextBlock block = document()->begin(); block.isValid() && height < kMostLines * line;
         block = block.next()) {
        height += blockBoundingRect(block).height();
    }
    const qreal shown = std::clamp(height, line, kMostLines * line);
    setFixedHeight(static_cast<int>(shown) + 2 * frameWidth() + 2);
}

}  // namespace ca
