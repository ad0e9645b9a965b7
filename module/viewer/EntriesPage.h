#pragma once

#include "module/viewer/EntriesModel.h"
#include "module/viewer/SearchBar.h"

#include <QPlainTextEdit>
#include <QTableView>
#include <QWidget>

#include <cstdint>
#include <span>

namespace ca {

/// The entries of a revocation list in a table that is searched by serial number, the selected
/// one's whole text below.
class CEntriesPage : public QWidget {
    Q_OBJECT
  public:
    explicit CEntriesPage(QWidget* parent = nullptr);

    /// \param list  outlives the page, or the next call.
    void ShowList(std::span<const unsigned char> list);
    /// \param language  as CEntriesModel::SetLanguage().
    void Translate(std::uint32_t language);

    CSearchBar& Search() { return *m_search; }
    /// Selects the next or previous entry that has the digits searched for, round the end.
    void FindNext(bool forward);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void ShowSelected();
    void FindFrom(int row, bool forward);

    CSearchBar* m_search;
    QTableView* m_table;
    QPlainTextEdit* m_text;
    CEntriesModel* m_model;
    std::uint32_t m_language = 0;  // of the texts, 0 for the process's
};

}  // namespace ca
