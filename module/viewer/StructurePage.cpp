#include "module/viewer/StructurePage.h"

#include "common/Lng.h"
#include "module/viewer/ViewerText.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace {

// Characters of the columns, where there is room.
constexpr int kElementWidth = 25;
constexpr int kValueWidth = 22;
constexpr int kNumberWidth = 9;
constexpr int kElementShare = 36;  // percent of the width that the first one has at most
constexpr int kIndentation = 12;   // pixels
constexpr int kOpenLevels = 3;     // at first: certificate, signed part, its members
constexpr int kSearchSlice = 30;   // ms that a search runs before the window has its turn
constexpr int kRowsBetween = 256;  // looked at between two looks at the clock

}  // namespace

namespace ca {

CStructurePage::CStructurePage(QWidget* parent)
    : QWidget(parent),
      m_search(new CSearchBar("structureFind", this)),
      m_menuButton(new QToolButton),
      m_menu(new QMenu(this)),
      m_damage(new QLabel),
      m_split(new QSplitter(Qt::Horizontal)),
      m_tree(new QTreeView),
      m_octets(new CHexView),
      m_model(new CAsn1TreeModel(this)),
      m_highlight(new CHighlightDelegate(this)) {
    BuildTree();
    BuildMenu();
    m_octets->setObjectName("octets");
    m_damage->setObjectName("damageText");
    m_damage->setTextFormat(Qt::PlainText);
    m_damage->setWordWrap(true);
    m_damage->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_split->setChildrenCollapsible(false);
    m_split->addWidget(m_tree);
    m_split->addWidget(m_octets);
    m_split->setStretchFactor(0, 1);
    m_split->setStretchFactor(1, 0);
    auto* line = new QHBoxLayout;
    line->addWidget(m_search, 1);
    line->addWidget(m_menuButton);
    auto* whole = new QVBoxLayout(this);
    whole->addLayout(line);
    whole->addWidget(m_damage);
    whole->addWidget(m_split, 1);
    m_searching.setInterval(0);
    connect(&m_searching, &QTimer::timeout, this, &CStructurePage::SearchOn);
    connect(m_search, &CSearchBar::Changed, this, &CStructurePage::StartSearch);
    connect(m_search, &CSearchBar::Next, this, &CStructurePage::FindNext);
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CStructurePage::MarkSelected);
    connect(m_octets, &CHexView::Chosen, this,
            [this](qulonglong offset) { SelectAt(static_cast<std::size_t>(offset)); });
    connect(m_octets, &CHexView::CopyWanted, this, [this] { Copy(Form::kHex); });
}

void CStructurePage::BuildTree() {
    const int character = fontMetrics().averageCharWidth();
    m_model->SetDamageIcon(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this));
    m_tree->setObjectName("structureTree");
    m_tree->setUniformRowHeights(true);
    m_tree->setAllColumnsShowFocus(true);
    m_tree->setModel(m_model);
    m_tree->setItemDelegate(m_highlight);
    m_tree->setIndentation(kIndentation);
    m_tree->header()->setStretchLastSection(false);
    m_tree->header()->setSectionResizeMode(CAsn1TreeModel::kValue, QHeaderView::Stretch);
    m_tree->setMinimumWidth(kElementWidth * character);
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    m_tree->installEventFilter(this);
    connect(m_tree, &QTreeView::customContextMenuRequested, this,
            [this](const QPoint& place) { m_menu->popup(m_tree->viewport()->mapToGlobal(place)); });
}

void CStructurePage::BuildMenu() {
    m_menu->addAction(QString(), this, [this] { Copy(Form::kValue); });
    m_menu->addAction(QString(), this, [this] { Copy(Form::kHex); });
    m_menu->addAction(QString(), this, [this] { Copy(Form::kBase64); });
    m_menu->addAction(QString(), this, &CStructurePage::SaveWanted);
    m_menuButton->setObjectName("elementButton");
    m_menuButton->setMenu(m_menu);
    m_menuButton->setPopupMode(QToolButton::InstantPopup);
    m_menuButton->setFocusPolicy(Qt::TabFocus);
}

void CStructurePage::ShowOctets(std::vector<unsigned char> octets, const QString& damage) {
    m_searching.stop();
    m_searched = {};
    m_octets->SetOctets({});
    m_model->SetOctets(std::move(octets));
    m_octets->SetOctets(m_model->Octets());
    m_damage->setText(damage);
    m_damage->setVisible(!damage.isEmpty());
    QModelIndex at = m_model->index(0, 0);
    m_tree->setCurrentIndex(at);
    for (int level = 0; level < kOpenLevels && at.isValid(); ++level) {
        m_tree->expand(at);
        at = m_model->index(0, 0, at);
    }
    MarkSelected();
}

void CStructurePage::Translate(std::uint32_t language) {
    m_language = language;
    m_model->SetLanguage(language);
    const int numbers = kNumberWidth * fontMetrics().averageCharWidth();
    for (const int column : {CAsn1TreeModel::kOffset, CAsn1TreeModel::kLength}) {
        m_tree->setColumnWidth(column,
                               std::max(numbers, m_tree->header()->sectionSizeHint(column)));
    }
    m_search->Translate(MessageText(kMsgDlgFind));
    m_menuButton->setText(Word(ViewerWord::kElementMenu));
    constexpr ViewerWord kActions[] = {ViewerWord::kCopyValue, ViewerWord::kCopyHex,
                                       ViewerWord::kCopyBase64, ViewerWord::kSaveNode};
    for (int i = 0; i < m_menu->actions().size(); ++i) {
        m_menu->actions()[i]->setText(Word(kActions[i]));
    }
    m_tree->setAccessibleName(MessageText(kMsgDlgStructure).remove('&'));
    m_octets->setAccessibleName(MessageText(kMsgDlgOctets));
    m_tree->viewport()->update();
}

// "*" opens everything below a row, which for strangers' octets may be millions of rows. Copying
// takes the octets instead of the visible text.
bool CStructurePage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Asterisk) {
            return true;
        }
        if (key->matches(QKeySequence::Copy)) {
            Copy(Form::kHex);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

// The octets go below where the values would have no room beside them.
void CStructurePage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const int character = fontMetrics().averageCharWidth();
    const int tree = (kElementWidth + kValueWidth + 2 * kNumberWidth) * character;
    const bool isWide = width() >= tree + m_octets->sizeHint().width();
    const Qt::Orientation wanted = isWide ? Qt::Horizontal : Qt::Vertical;
    if (m_split->orientation() != wanted) {
        m_split->setOrientation(wanted);
        m_split->setSizes(isWide ? QList<int>{tree, m_octets->sizeHint().width()}
                                 : QList<int>{2, 1});
    }
    const int treeWidth = isWide ? tree : width();
    // The marked octets tell the length too.
    m_tree->setColumnHidden(CAsn1TreeModel::kLength,
                            treeWidth < tree - kValueWidth * character / 3);
    m_tree->setColumnWidth(CAsn1TreeModel::kElement,
                           std::min(kElementWidth * character, treeWidth * kElementShare / 100));
}

void CStructurePage::MarkSelected() {
    const CAsn1TreeModel::Range range = m_model->RangeOf(m_tree->currentIndex());
    m_octets->SetMarked(range.begin, range.content, range.end);
    // What a reader that does not see the marks is told.
    const QString element = m_tree->currentIndex().siblingAtColumn(0).data().toString();
    m_octets->setAccessibleDescription(
        QStringLiteral("%1 [%2, %3)").arg(element).arg(range.begin).arg(range.end));
}

void CStructurePage::SelectAt(std::size_t offset) {
    const QModelIndex at = m_model->InnermostAt(offset);
    if (at.isValid()) {
        m_tree->setCurrentIndex(at);
        m_tree->scrollTo(at);
    }
}

std::span<const unsigned char> CStructurePage::SelectedOctets() const {
    return m_model->OctetsOf(m_tree->currentIndex());
}

void CStructurePage::Copy(Form form) {
    const auto octets = SelectedOctets();
    const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(octets.data()),
                                               static_cast<int>(octets.size()));
    QGuiApplication::clipboard()->setText(
        form == Form::kValue ? m_model->WholeValue(m_tree->currentIndex())
        : form == Form::kHex ? QString::fromLatin1(bytes.toHex())
                             : QString::fromLatin1(bytes.toBase64()));
}

// From the selected element on, itself included, so that typing on stays where it is.
void CStructurePage::StartSearch(const QString& wanted) {
    m_searching.stop();
    m_search->SetResult({});
    m_highlight->SetWanted(wanted);
    m_tree->viewport()->update();
    const QModelIndex current = m_tree->currentIndex().siblingAtColumn(0);
    if (!wanted.isEmpty() && current.isValid() && !m_model->Holds(current, wanted)) {
        FindNext(/*forward=*/true);
    }
}

void CStructurePage::FindNext(bool forward) {
    if (!m_search->Wanted().isEmpty() && m_model->rowCount() != 0) {
        m_isForward = forward;
        if (!m_tree->currentIndex().isValid()) {
            m_tree->setCurrentIndex(m_model->index(0, 0));
        }
        m_searched = m_tree->currentIndex().siblingAtColumn(0);
        m_search->SetResult({});
        m_searching.start();
        SearchOn();
    }
}

void CStructurePage::SearchOn() {
    const CLanguageScope scope(m_language);
    QElapsedTimer clock;
    clock.start();
    const QModelIndex start = m_tree->currentIndex().siblingAtColumn(0);
    for (int rows = 1; rows % kRowsBetween != 0 || clock.elapsed() < kSearchSlice; ++rows) {
        m_searched = m_model->Next(m_searched, m_isForward);
        const bool isFound = m_model->Holds(m_searched, m_search->Wanted());
        if (isFound || m_searched == start) {
            m_searching.stop();
            m_search->SetResult(isFound ? QString() : MessageText(kMsgDlgNothingFound));
            if (isFound) {
                m_tree->setCurrentIndex(m_searched);
                m_tree->scrollTo(m_searched);
            }
            return;
        }
    }
    m_search->SetResult(Word(ViewerWord::kSearching));
}

}  // namespace ca
