#pragma once

#include "module/viewer/CertFields.h"
#include "module/viewer/FieldModel.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeView>
#include <QWidget>

namespace ca {

/// Every field of a certificate in a tree that can be searched, the selected one's whole text
/// below.
class CDetailsPage : public QWidget {
    Q_OBJECT
  public:
    explicit CDetailsPage(QWidget* parent = nullptr);

    void ShowFields(CCertFields fields);
    void Translate();

    /// Puts the cursor where one types what to search for.
    void StartSearch();
    /// Selects the next or previous field that holds what is searched for, round the end.
    void FindNext(bool forward);

  private:
    void ApplySearch(const QString& text);
    void FitLabels();
    void ShowSelected();
    void Copy();
    QModelIndex Next(const QModelIndex& from, bool forward) const;

    QLabel* m_findLabel;
    QLineEdit* m_find;
    QLabel* m_findResult;
    QTreeView* m_tree;
    QLabel* m_textLabel;
    QPlainTextEdit* m_text;
    QPushButton* m_copy;
    CFieldModel* m_model;
    CFieldFilter* m_filter;
    int m_labelWidth;  // of the first column, as set here last
};

}  // namespace ca
