#include "module/viewer/TextBox.h"

#include "common/Lng.h"
#include "module/viewer/ViewerText.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QTextBlock>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <cmath>

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
    m_whole = text;
    m_language = GetZORNALng();
    setPlainText(LaidOut(text, kMaxBoxText));
    FitHeight();
}

// With words of the viewer's own: those of Qt's menu are in the language of the host.
void CTextBox::contextMenuEvent(QContextMenuEvent* event) {
    const CLanguageScope scope(m_language);
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(Word(ViewerWord::kCopySelected), this, &QPlainTextEdit::copy)
        ->setEnabled(textCursor().hasSelection());
    menu->addAction(Word(ViewerWord::kCopyWhole), this,
                    [this] { QGuiApplication::clipboard()->setText(m_whole); });
    menu->addAction(Word(ViewerWord::kSelectAll), this, &QPlainTextEdit::selectAll);
    menu->popup(event->globalPos());
}

QMimeData* CTextBox::createMimeDataFromSelection() const {
    const QString selected = textCursor().selectedText();
    auto* copied = new QMimeData;  // the clipboard's, which asked for it
    copied->setText(selected.size() == document()->characterCount() - 1
                        ? m_whole
                        : QString(selected).replace(QChar::ParagraphSeparator, '\n'));
    return copied;
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

// Whether the text needs no bar, which is asked of the width without one: a bar takes width, and
// with it lines, and would come and go on its own.
bool CTextBox::FitsWithoutBar() const {
    int lines = 0;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        QTextLayout layout(block.text(), font());
        layout.setTextOption(document()->defaultTextOption());
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(width() - 2 * frameWidth());
            if (++lines > kMostLines) {
                return false;
            }
        }
        layout.endLayout();
    }
    return true;
}

void CTextBox::FitHeight() {
    const bool fits = FitsWithoutBar();
    setVerticalScrollBarPolicy(fits ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAlwaysOn);
    const QTextBlock first = document()->begin();
    // The lines as they are laid out: fonts that stand in for missing characters make higher ones.
    qreal height = kMostLines * blockBoundingRect(first).height() / std::max(first.lineCount(), 1);
    if (fits) {
        height = 0;
        for (QTextBlock block = first; block.isValid(); block = block.next()) {
            height += blockBoundingRect(block).height();
        }
    }
    setFixedHeight(static_cast<int>(std::ceil(height)) + 2 * frameWidth() + 2);
}

}  // namespace ca
