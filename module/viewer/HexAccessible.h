#pragma once

#include "module/viewer/HexView.h"

#include <QAccessibleTextInterface>
#include <QAccessibleWidget>

namespace ca {

/// What a screen reader is told of a CHexView: a text of two hexadecimal digits and a blank an
/// octet, in lines as the view has them, with its cursor, and the marked octets as the selection.
/// The text is made for the places that are asked for: there may be millions of octets.
class CHexAccessible : public QAccessibleWidget, public QAccessibleTextInterface {
  public:
    explicit CHexAccessible(CHexView* view);

    /// Makes all views of the process speak; once is enough.
    static void Install();

    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;
    /// The octet at the cursor: "0000000c: 02".
    QString text(QAccessible::Text kind) const override;

    void selection(int index, int* begin, int* end) const override;
    int selectionCount() const override;
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    int cursorPosition() const override;
    void setCursorPosition(int position) override;
    QString text(int begin, int end) const override;
    QString textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* begin,
                             int* end) const override;
    QString textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* begin,
                            int* end) const override;
    QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* begin,
                         int* end) const override;
    int characterCount() const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int begin, int end) override;
    QString attributes(int offset, int* begin, int* end) const override;

  private:
    CHexView& View() const { return *static_cast<CHexView*>(widget()); }
    QString Part(int number, int size, int* begin, int* end) const;
    int PartSize(QAccessible::TextBoundaryType boundary) const;
};

}  // namespace ca
