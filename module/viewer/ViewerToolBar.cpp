#include "module/viewer/ViewerToolBar.h"

#include "module/viewer/ViewerText.h"

#include <QToolButton>

namespace ca {

CViewerToolBar::CViewerToolBar(QWidget* parent)
    : QToolBar(parent),
      m_open(AddButton("openButton", QKeySequence::Open, &CViewerToolBar::OpenWanted)),
      m_save(AddButton("saveButton", QKeySequence::Save, &CViewerToolBar::SaveWanted)),
      m_print(AddButton("printButton", QKeySequence::Print, &CViewerToolBar::PrintWanted)),
      m_copyMenu(new QMenu(this)) {
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    auto* copy = new QToolButton;
    copy->setObjectName("copyMenuButton");
    copy->setMenu(m_copyMenu);
    copy->setPopupMode(QToolButton::InstantPopup);
    m_copy = m_copyMenu->menuAction();
    m_copyText = m_copyMenu->addAction(QString(), this, &CViewerToolBar::CopyTextWanted);
    m_copyPem = m_copyMenu->addAction(QString(), this, &CViewerToolBar::CopyPemWanted);
    m_copyJson = m_copyMenu->addAction(QString(), this, &CViewerToolBar::CopyJsonWanted);
    m_copyAll = m_copyMenu->addAction(QString(), this, &CViewerToolBar::CopyAllWanted);
    copy->setDefaultAction(m_copy);
    insertWidget(m_print, copy);
    addSeparator();
    m_language =
        AddButton("languageButton", QKeySequence::UnknownKey, &CViewerToolBar::LanguageWanted);
    for (QToolButton* button : findChildren<QToolButton*>()) {
        button->setFocusPolicy(Qt::TabFocus);
    }
}

QAction* CViewerToolBar::AddButton(const char* name, QKeySequence::StandardKey key,
                                   void (CViewerToolBar::*wanted)()) {
    QAction* const action = addAction(QString());
    if (key != QKeySequence::UnknownKey) {
        action->setShortcut(key);
    }
    widgetForAction(action)->setObjectName(name);
    connect(action, &QAction::triggered, this, wanted);
    return action;
}

void CViewerToolBar::Translate() {
    const auto name = [](QAction* action, const QString& text) {
        action->setText(text);
        action->setIconText(text);  // which would lose its mnemonic and its dots
        action->setToolTip(
            QString(text).remove('&') +
            (action->shortcut().isEmpty()
                 ? ""
                 : " (" + action->shortcut().toString(QKeySequence::NativeText) + ")"));
    };
    name(m_open, Word(ViewerWord::kOpen));
    name(m_save, MessageText(kMsgDlgSave));
    name(m_print, Word(ViewerWord::kPrint));
    name(m_copy, Word(ViewerWord::kCopyMenu));
    name(m_copyText, Word(ViewerWord::kCopyText));
    name(m_copyPem, Word(ViewerWord::kCopyPem));
    name(m_copyJson, Word(ViewerWord::kCopyJson));
    name(m_copyAll, Word(ViewerWord::kCopyAll));
    name(m_language, Word(ViewerWord::kLanguage));
}

void CViewerToolBar::SetPossible(bool hasItem, bool canSave, bool hasPem, bool hasJson) {
    m_save->setEnabled(canSave);
    m_print->setEnabled(hasItem);
    m_copy->setEnabled(hasItem);
    m_copyPem->setEnabled(hasPem);
    m_copyJson->setEnabled(hasJson);
}

}  // namespace ca
