#include "module/viewer/EntriesPage.h"

#include "common/Lng.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QSplitter>
#include <QVBoxLayout>

namespace {

constexpr int kRowsMeasured = 64;  // of which the columns take their widths
constexpr int kTableShare = 3;     // of the height, beside the text's 1
constexpr int kTextShare = 1;

}  // namespace

namespace ca {

CEntriesPage::CEntriesPage(QWidget* parent)
    : QWidget(parent),
      m_search(new CSearchBar("serialFind", this)),
      m_table(new QTableView),
      m_text(new QPlainTextEdit),
      m_model(new CEntriesModel(this)) {
    m_table->setObjectName("entryTable");
    m_table->setModel(m_model);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setWordWrap(false);
    m_table->setTabKeyNavigation(false);
    m_table->setAlternatingRowColors(true);
    m_table->setShowGrid(false);
    // One height for all: a million rows are not measured one by one.
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->horizontalHeader()->setResizeContentsPrecision(kRowsMeasured);
    m_table->installEventFilter(this);
    m_text->setObjectName("entryText");
    m_text->setReadOnly(true);
    m_text->setTabChangesFocus(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);

    auto* split = new QSplitter(Qt::Vertical);
    split->setChildrenCollapsible(false);
    split->addWidget(m_table);
    split->addWidget(m_text);
    split->setStretchFactor(0, kTableShare);
    split->setStretchFactor(1, kTextShare);
    auto* whole = new QVBoxLayout(this);
    whole->addWidget(m_search);
    whole->addWidget(split, 1);

    connect(m_table->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CEntriesPage::ShowSelected);
    connect(m_search, &CSearchBar::Changed, this,
            [this] { FindFrom(m_table->currentIndex().row(), /*forward=*/true); });
    connect(m_search, &CSearchBar::Next, this, &CEntriesPage::FindNext);
}

void CEntriesPage::ShowList(std::span<const unsigned char> list) {
    m_model->SetList(list);
    m_search->SetResult({});
    if (m_model->rowCount() != 0) {
        m_table->setCurrentIndex(m_model->index(0, 0));
    }
    m_table->resizeColumnsToContents();
    ShowSelected();
}

void CEntriesPage::Translate(std::uint32_t language) {
    m_language = language;
    m_model->SetLanguage(language);
    m_search->Translate(Word(ViewerWord::kFindSerial));
    const QString name = Word(ViewerWord::kEntriesTab).remove('&');
    m_table->setAccessibleName(name);
    m_text->setAccessibleName(Word(ViewerWord::kEntry));
    ShowSelected();
}

bool CEntriesPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        if (m_table->currentIndex().isValid()) {
            QGuiApplication::clipboard()->setText(m_model->TextOf(m_table->currentIndex().row()));
        }
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void CEntriesPage::ShowSelected() {
    const CLanguageScope scope(m_language);
    const QModelIndex current = m_table->currentIndex();
    m_text->setPlainText(current.isValid() ? LaidOut(m_model->TextOf(current.row()), kMaxPageText)
                                           : QString());
}

void CEntriesPage::FindFrom(int row, bool forward) {
    const CLanguageScope scope(m_language);
    const int found = m_model->FindSerial(m_search->Wanted(), row, forward);
    const bool isInVain = found < 0 && !m_search->Wanted().isEmpty();
    m_search->SetResult(isInVain ? MessageText(kMsgDlgNothingFound) : QString());
    if (found >= 0) {
        m_table->setCurrentIndex(m_model->index(found, 0));
        m_table->scrollTo(m_table->currentIndex(), QAbstractItemView::PositionAtCenter);
    }
}

void CEntriesPage::FindNext(bool forward) {
    FindFrom(m_table->currentIndex().row() + (forward ? 1 : 0), forward);
}

}  // namespace ca
