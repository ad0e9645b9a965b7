#pragma once

#include <QString>
#include <QStyledItemDelegate>
#include <QTextLayout>

class QPlainTextEdit;

namespace ca {

/// Where a text holds what is searched for, whatever the case of its letters, as ranges of a
/// format that marks them; at most kMaxHighlights.
QVector<QTextLayout::FormatRange> FindHighlights(const QString& text, const QString& wanted);
inline constexpr int kMaxHighlights = 1000;

/// Marks it in a text field.
void HighlightIn(QPlainTextEdit& edit, const QString& wanted);

/// Draws the items of a tree or table with what is searched for marked in their texts.
class CHighlightDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// "" marks nothing. The views are to be updated then.
    void SetWanted(const QString& wanted) { m_wanted = wanted; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

  private:
    QString m_wanted;
};

}  // namespace ca
