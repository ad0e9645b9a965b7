#pragma once

#include "module/viewer/Asn1TreeModel.h"
#include "module/viewer/HexView.h"
#include "module/viewer/Highlight.h"
#include "module/viewer/SearchBar.h"

#include <QLabel>
#include <QMenu>
#include <QSplitter>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <QWidget>

#include <cstdint>
#include <vector>

namespace ca {

/// The ASN.1 structure as a tree beside its octets, below it where there is little room: what is
/// selected in one is marked in the other. A sentence above says what is wrong with the octets.
class CStructurePage : public QWidget {
    Q_OBJECT
  public:
    explicit CStructurePage(QWidget* parent = nullptr);

    /// \param damage  the sentence; "" for none.
    void ShowOctets(std::vector<unsigned char> octets, const QString& damage);
    /// \param language  as CAsn1TreeModel::SetLanguage().
    void Translate(std::uint32_t language);

    CSearchBar& Search() { return *m_search; }
    /// Goes on to the next or previous element that holds what is searched for. A large structure
    /// is looked through bit by bit, while the window goes on working.
    void FindNext(bool forward);

  Q_SIGNALS:
    /// The user wants the octets of the selected element in a file.
    void SaveWanted();

  public:
    /// The octets of the selected element; valid until the next ShowOctets().
    std::span<const unsigned char> SelectedOctets() const;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    enum class Form { kValue, kHex, kBase64 };

    void BuildTree();
    void BuildMenu();
    void MarkSelected();
    void SelectAt(std::size_t offset);
    void Copy(Form form);
    void StartSearch(const QString& wanted);
    void SearchOn();

    CSearchBar* m_search;
    QToolButton* m_menuButton;
    QMenu* m_menu;
    QLabel* m_damage;
    QSplitter* m_split;
    QTreeView* m_tree;
    CHexView* m_octets;
    CAsn1TreeModel* m_model;
    CHighlightDelegate* m_highlight;
    QTimer m_searching;
    QModelIndex m_searched;  // the row looked at last
    bool m_isForward = true;
    std::uint32_t m_language = 0;  // of the texts, 0 for the process's
};

}  // namespace ca
