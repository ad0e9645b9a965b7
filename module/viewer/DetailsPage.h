#pragma once

#include "module/viewer/FieldModel.h"
#include "module/viewer/Highlight.h"
#include "module/viewer/RecordFields.h"
#include "module/viewer/SearchBar.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeView>
#include <QWidget>

#include <cstdint>

namespace ca {

/// Every field of a record in a tree that can be searched, the selected one's whole text
/// below.
class CDetailsPage : public QWidget {
    Q_OBJECT
  public:
    explicit CDetailsPage(QWidget* parent = nullptr);

    void ShowFields(CRecordFields fields);
    void Translate();

    CSearchBar& Search() { return *m_search; }
    /// Selects the next or previous field that holds what is searched for, round the end.
    void FindNext(bool forward);

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void ApplySearch(const QString& text);
    void FitLabels();
    void ShowSelected();
    void Copy();
    QModelIndex Next(const QModelIndex& from, bool forward) const;

    CSearchBar* m_search;
    QTreeView* m_tree;
    QLabel* m_textLabel;
    QPlainTextEdit* m_text;
    QPushButton* m_copy;
    CFieldModel* m_model;
    CFieldFilter* m_filter;
    CHighlightDelegate* m_highlight;
    int m_labelWidth = 0;          // of the first column, as set here last
    std::uint32_t m_language = 0;  // of the texts, 0 for the process's
};

}  // namespace ca
