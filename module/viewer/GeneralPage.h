#pragma once

#include "module/viewer/ItemKinds.h"
#include "module/viewer/TextBox.h"

#include <QGridLayout>
#include <QLabel>
#include <QScrollArea>
#include <QWidget>

namespace ca {

/// What an item is at a glance: its name and a row for each fact, with a sign where one is to
/// beware. A verdict stands below the name, in words and in a colour that shows on the window's.
class CGeneralPage : public QWidget {
    Q_OBJECT
  public:
    explicit CGeneralPage(QWidget* parent = nullptr);

    void ShowItem(const ItemDescription& description);

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void AddRow(const SummaryRow& row);
    QWidget* MarkOf(const SummaryRow& row);
    void ColourVerdict();

    QLabel* m_icon;
    CTextBox* m_title;
    QLabel* m_verdict;
    ItemSign m_sign = ItemSign::kNone;
    QScrollArea* m_area;
    QGridLayout* m_rows = nullptr;
};

}  // namespace ca
