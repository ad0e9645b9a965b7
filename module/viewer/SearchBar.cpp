#include "module/viewer/SearchBar.h"

#include <QHBoxLayout>

namespace {

constexpr int kMaxSearch = 1000;  // characters

}  // namespace

namespace ca {

CSearchBar::CSearchBar(const char* name, QWidget* parent)
    : QWidget(parent),
      m_caption(new QLabel),
      m_text(new QLineEdit),
      m_back(new QToolButton),
      m_forward(new QToolButton),
      m_result(new QLabel) {
    m_text->setObjectName(name);
    m_text->setMaxLength(kMaxSearch);
    m_text->setClearButtonEnabled(true);
    m_caption->setBuddy(m_text);
    m_result->setObjectName(QString::fromLatin1(name) + "Result");
    m_result->hide();
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(m_caption);
    line->addWidget(m_text, 1);
    line->addWidget(m_back);
    line->addWidget(m_forward);
    line->addWidget(m_result);
    m_back->setArrowType(Qt::UpArrow);
    m_forward->setArrowType(Qt::DownArrow);
    for (QToolButton* button : {m_back, m_forward}) {
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
    }
    connect(m_text, &QLineEdit::textChanged, this, &CSearchBar::Changed);
    connect(m_text, &QLineEdit::returnPressed, this, [this] { Q_EMIT Next(/*forward=*/true); });
    connect(m_back, &QToolButton::clicked, this, [this] { Q_EMIT Next(/*forward=*/false); });
    connect(m_forward, &QToolButton::clicked, this, [this] { Q_EMIT Next(/*forward=*/true); });
}

void CSearchBar::Start() {
    m_text->setFocus(Qt::ShortcutFocusReason);
    m_text->selectAll();
}

void CSearchBar::SetResult(const QString& words) {
    m_result->setText(words);
    m_result->setVisible(!words.isEmpty());
}

void CSearchBar::Translate(const QString& caption) {
    m_caption->setText(caption);
    m_text->setAccessibleName(QString(caption).remove('&'));
    m_back->setAccessibleName(Word(ViewerWord::kFindPrevious));
    m_back->setToolTip(Word(ViewerWord::kFindPrevious));
    m_forward->setAccessibleName(Word(ViewerWord::kFindNext));
    m_forward->setToolTip(Word(ViewerWord::kFindNext));
}

}  // namespace ca
