#pragma once

#include "module/viewer/ItemKinds.h"
#include "module/viewer/TextBox.h"

#include <QGridLayout>
#include <QLabel>
#include <QScrollArea>
#include <QWidget>

namespace ca {

/// What an item is at a glance: its name and a row for each fact, with a sign where one is to
/// beware.
class CGeneralPage : public QWidget {
    Q_OBJECT
  public:
    explicit CGeneralPage(QWidget* parent = nullptr);

    void ShowItem(const ItemDescription& description);

  private:
    void AddRow(const SummaryRow& row);
    QWidget* MarkOf(const SummaryRow& row);

    QLabel* m_icon;
    CTextBox* m_title;
    QScrollArea* m_area;
    QGridLayout* m_rows = nullptr;
};

}  // namespace ca
