#include "module/viewer/Highlight.h"

#include <QApplication>
#include <QPainter>
#include <QPlainTextEdit>
#include <QStyle>

namespace {

// Black on yellow, in every palette.
QTextCharFormat MarkFormat() {
    QTextCharFormat format;
    format.setBackground(QColor(255, 225, 80));
    format.setForeground(Qt::black);
    return format;
}

}  // namespace

namespace ca {

QVector<QTextLayout::FormatRange> FindHighlights(const QString& text, const QString& wanted) {
    QVector<QTextLayout::FormatRange> found;
    const QTextCharFormat format = MarkFormat();
    int at = wanted.isEmpty() ? -1 : text.indexOf(wanted, 0, Qt::CaseInsensitive);
    for (; at >= 0 && found.size() < kMaxHighlights;
         at = text.indexOf(wanted, at + wanted.size(), Qt::CaseInsensitive)) {
        found.push_back({at, wanted.size(), format});
    }
    return found;
}

void HighlightIn(QPlainTextEdit& edit, const QString& wanted) {
    QList<QTextEdit::ExtraSelection> marks;
    for (const auto& range : FindHighlights(edit.toPlainText(), wanted)) {
        QTextEdit::ExtraSelection mark{QTextCursor(edit.document()), range.format};
        mark.cursor.setPosition(range.start);
        mark.cursor.setPosition(range.start + range.length, QTextCursor::KeepAnchor);
        marks.push_back(mark);
    }
    edit.setExtraSelections(marks);
}

void CHighlightDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const {
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    if (FindHighlights(item.text, m_wanted).isEmpty()) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    const QStyle& style = *(item.widget != nullptr ? item.widget->style() : QApplication::style());
    const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, item.widget) + 1;
    const QRect place = style.subElementRect(QStyle::SE_ItemViewItemText, &item, item.widget)
                            .adjusted(margin, 0, -margin, 0);
    const QString shown = item.fontMetrics.elidedText(item.text, item.textElideMode, place.width());
    item.text.clear();
    style.drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

    const bool isSelected = (item.state & QStyle::State_Selected) != 0;
    painter->save();
    painter->setPen(item.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
    QTextLayout layout(shown, item.font);
    layout.setFormats(FindHighlights(shown, m_wanted));
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(place.width());
    layout.endLayout();
    const qreal below = (place.height() - line.height()) / 2;
    const bool isRight = (item.displayAlignment & Qt::AlignRight) != 0;
    const qreal indent = isRight ? place.width() - line.naturalTextWidth() : 0;
    painter->setClipRect(place);
    layout.draw(painter, QPointF(place.left() + indent, place.top() + below));
    painter->restore();
}

}  // namespace ca
