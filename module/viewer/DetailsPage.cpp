#include "module/viewer/DetailsPage.h"

#include "common/Lng.h"
#include "module/viewer/ViewerText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace {

constexpr int kLabelShare = 45;  // percent of the width that the first column has at most
constexpr int kTreeShare = 3;    // of the height, beside the text's 2
constexpr int kTextShare = 2;

QWidget* Above(QLabel* label, QPushButton* button, QWidget* below) {
    auto* whole = new QWidget;
    auto* column = new QVBoxLayout(whole);
    column->setContentsMargins(0, 0, 0, 0);
    auto* line = new QHBoxLayout;
    line->addWidget(label, 1);
    line->addWidget(button);
    column->addLayout(line);
    column->addWidget(below, 1);
    return whole;
}

}  // namespace

namespace ca {

CDetailsPage::CDetailsPage(QWidget* parent)
    : QWidget(parent),
      m_search(new CSearchBar("findText", this)),
      m_tree(new QTreeView),
      m_textLabel(new QLabel),
      m_text(new QPlainTextEdit),
      m_copy(new QPushButton),
      m_model(new CFieldModel(this)),
      m_filter(new CFieldFilter(this)),
      m_highlight(new CHighlightDelegate(this)) {
    m_filter->setSourceModel(m_model);
    m_tree->setObjectName("fieldTree");
    m_tree->setModel(m_filter);
    m_tree->setItemDelegate(m_highlight);
    m_tree->setUniformRowHeights(true);
    m_tree->setAlternatingRowColors(true);
    m_tree->setAllColumnsShowFocus(true);
    m_text->setObjectName("fieldText");
    m_text->setReadOnly(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_text->setTabChangesFocus(true);
    m_text->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_textLabel->setBuddy(m_text);
    m_copy->setObjectName("copyButton");
    // Enter in the search field would press it.
    m_copy->setAutoDefault(false);

    auto* split = new QSplitter(Qt::Vertical);
    split->setChildrenCollapsible(false);
    split->addWidget(m_tree);
    split->addWidget(Above(m_textLabel, m_copy, m_text));
    split->setStretchFactor(0, kTreeShare);
    split->setStretchFactor(1, kTextShare);
    auto* whole = new QVBoxLayout(this);
    whole->addWidget(m_search);
    whole->addWidget(split, 1);
    setTabOrder(m_tree, m_text);
    setTabOrder(m_text, m_copy);

    connect(m_search, &CSearchBar::Changed, this, &CDetailsPage::ApplySearch);
    connect(m_search, &CSearchBar::Next, this, &CDetailsPage::FindNext);
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CDetailsPage::ShowSelected);
    connect(m_copy, &QPushButton::clicked, this, &CDetailsPage::Copy);
    // The view's own copying takes the visible line alone.
    auto* copy = new QShortcut(QKeySequence::Copy, m_tree);
    copy->setContext(Qt::WidgetShortcut);
    connect(copy, &QShortcut::activated, this, &CDetailsPage::Copy);
}

void CDetailsPage::ShowFields(CRecordFields fields) {
    m_model->SetFields(std::move(fields));
    ApplySearch(m_search->Wanted());
    m_tree->setCurrentIndex(m_filter->index(0, 0));
    ShowSelected();
    FitLabels();
}

void CDetailsPage::Translate() {
    m_language = GetZORNALng();
    m_search->Translate(MessageText(kMsgDlgFind));
    m_textLabel->setText(MessageText(kMsgDlgFullText));
    m_copy->setText(MessageText(kMsgDlgCopy));
    m_model->SetHeaders(MessageText(kMsgDlgField), MessageText(kMsgDlgValue));
    m_tree->setAccessibleName(MessageText(kMsgDlgDetails).remove('&'));
    m_text->setAccessibleName(MessageText(kMsgDlgFullText));
}

void CDetailsPage::ApplySearch(const QString& text) {
    const CLanguageScope scope(m_language);
    m_highlight->SetWanted(text);
    m_filter->SetWanted(text);
    const bool isInVain = m_filter->rowCount() == 0 && !text.isEmpty();
    m_search->SetResult(isInVain ? MessageText(kMsgDlgNothingFound) : QString());
    if (text.isEmpty()) {
        m_tree->collapseAll();
        for (int row = 0; row < m_filter->rowCount(); ++row) {
            const QModelIndex field = m_filter->index(row, 0);
            m_tree->setExpanded(field, m_filter->hasChildren(m_filter->index(0, 0, field)));
        }
    } else {
        m_tree->expandAll();  // three levels at most
    }
    m_tree->scrollTo(m_tree->currentIndex());
    HighlightIn(*m_text, text);
}

// Room for the names of the extensions, as far as the window has it. What the user chose stays.
void CDetailsPage::FitLabels() {
    if (m_labelWidth == 0 || m_tree->columnWidth(0) == m_labelWidth) {
        m_tree->resizeColumnToContents(0);
        m_labelWidth = std::min(m_tree->columnWidth(0), m_tree->width() * kLabelShare / 100);
        m_tree->setColumnWidth(0, m_labelWidth);
    }
}

void CDetailsPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    FitLabels();
}

void CDetailsPage::FindNext(bool forward) {
    const QModelIndex start = m_tree->currentIndex();
    QModelIndex at = Next(start, forward);
    while (at.isValid() && at != start && !m_filter->Matches(m_filter->mapToSource(at))) {
        at = Next(at, forward);
    }
    if (at.isValid()) {
        m_tree->setCurrentIndex(at);
        m_tree->scrollTo(at);
    }
}

// The row before or after in the order they are shown in; from the last to the first.
QModelIndex CDetailsPage::Next(const QModelIndex& from, bool forward) const {
    const QModelIndex at = from.siblingAtColumn(0);
    const QModelIndex next = !at.isValid() ? QModelIndex()
                             : forward     ? m_tree->indexBelow(at)
                                           : m_tree->indexAbove(at);
    if (next.isValid()) {
        return next;
    }
    QModelIndex end = m_filter->index(forward ? 0 : m_filter->rowCount() - 1, 0);
    while (!forward && m_tree->isExpanded(end) && m_filter->rowCount(end) > 0) {
        end = m_filter->index(m_filter->rowCount(end) - 1, 0, end);
    }
    return end;
}

void CDetailsPage::ShowSelected() {
    const CLanguageScope scope(m_language);
    const QModelIndex current = m_tree->currentIndex().siblingAtColumn(0);
    m_text->setPlainText(LaidOut(current.data(CFieldModel::kFullText).toString(), kMaxPageText));
    HighlightIn(*m_text, m_search->Wanted());
    m_copy->setEnabled(m_tree->currentIndex().isValid());
}

void CDetailsPage::Copy() {
    const QModelIndex current = m_tree->currentIndex().siblingAtColumn(0);
    if (current.isValid()) {
        QGuiApplication::clipboard()->setText(current.data(CFieldModel::kFullText).toString());
    }
}

}  // namespace ca
