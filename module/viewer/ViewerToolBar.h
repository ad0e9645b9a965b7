#pragma once

#include <QAction>
#include <QMenu>
#include <QToolBar>

namespace ca {

/// What can be done with the files and the item that are shown.
class CViewerToolBar : public QToolBar {
    Q_OBJECT
  public:
    explicit CViewerToolBar(QWidget* parent = nullptr);

    void Translate();

    /// \param hasItem  an item is shown; the others: in which forms it can be had.
    void SetPossible(bool hasItem, bool canSave, bool hasPem, bool hasJson);

  Q_SIGNALS:
    void OpenWanted();
    void SaveWanted();
    void PrintWanted();
    void CopyPemWanted();
    void CopyTextWanted();
    void CopyAllWanted();
    void CopyJsonWanted();
    void LanguageWanted();

  private:
    QAction* AddButton(const char* name, QKeySequence::StandardKey key,
                       void (CViewerToolBar::*wanted)());

    QAction* m_open;
    QAction* m_save;
    QAction* m_print;
    QAction* m_copy;
    QMenu* m_copyMenu;
    QAction* m_copyPem;
    QAction* m_copyText;
    QAction* m_copyAll;
    QAction* m_copyJson;
    QAction* m_language;
};

}  // namespace ca
