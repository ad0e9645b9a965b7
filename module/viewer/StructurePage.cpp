#include "module/viewer/StructurePage.h"

#include "common/Lng.h"
#include "module/viewer/ViewerText.h"
#include "records/text/VisibleText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QSplitter>
#include <QStyle>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr int kElementWidth = 210;  // pixels
constexpr int kValueWidth = 130;
constexpr int kNumberWidth = 76;
constexpr int kIndentation = 12;
constexpr int kOpenLevels = 3;  // at first: certificate, signed part, its members

}  // namespace

namespace ca {

CStructurePage::CStructurePage(QWidget* parent)
    : QWidget(parent),
      m_tree(new QTreeView),
      m_octets(new CHexView),
      m_model(new CAsn1TreeModel(this)) {
    m_model->SetDamageIcon(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this));
    m_tree->setObjectName("structureTree");
    m_tree->setUniformRowHeights(true);
    m_tree->setAllColumnsShowFocus(true);
    m_tree->setModel(m_model);
    m_tree->setColumnWidth(CAsn1TreeModel::kElement, kElementWidth);
    m_tree->setColumnWidth(CAsn1TreeModel::kValue, kValueWidth);
    m_tree->setColumnWidth(CAsn1TreeModel::kOffset, kNumberWidth);
    m_tree->setColumnWidth(CAsn1TreeModel::kLength, kNumberWidth);
    m_tree->header()->setStretchLastSection(false);
    m_tree->header()->setMinimumSectionSize(kNumberWidth);
    m_tree->header()->setSectionResizeMode(CAsn1TreeModel::kValue, QHeaderView::Stretch);
    m_tree->installEventFilter(this);
    m_octets->setObjectName("octets");

    auto* split = new QSplitter(Qt::Horizontal);
    split->setChildrenCollapsible(false);
    m_tree->setIndentation(kIndentation);
    m_tree->setMinimumWidth(kElementWidth);
    split->addWidget(m_tree);
    split->addWidget(m_octets);
    split->setStretchFactor(0, 1);
    split->setStretchFactor(1, 0);
    split->setSizes({kElementWidth + kValueWidth + 2 * kNumberWidth, m_octets->sizeHint().width()});
    auto* whole = new QVBoxLayout(this);
    whole->addWidget(split);
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CStructurePage::MarkSelected);
    connect(m_octets, &CHexView::Chosen, this,
            [this](qulonglong offset) { SelectAt(static_cast<std::size_t>(offset)); });
    connect(m_octets, &CHexView::CopyWanted, this, &CStructurePage::CopyMarked);
}

void CStructurePage::ShowOctets(std::vector<unsigned char> octets) {
    m_octets->SetOctets({});
    m_model->SetOctets(std::move(octets));
    m_octets->SetOctets(m_model->Octets());
    QModelIndex at = m_model->index(0, 0);
    m_tree->setCurrentIndex(at);
    for (int level = 0; level < kOpenLevels && at.isValid(); ++level) {
        m_tree->expand(at);
        at = m_model->index(0, 0, at);
    }
    MarkSelected();
}

void CStructurePage::Translate(std::uint32_t language) {
    m_model->SetLanguage(language);
    m_tree->setAccessibleName(MessageText(kMsgDlgStructure).remove('&'));
    m_octets->setAccessibleName(MessageText(kMsgDlgOctets));
    m_tree->viewport()->update();
}

// "*" opens everything below a row, which for strangers' octets may be millions of rows. Copying
// takes the whole value instead of the visible text.
bool CStructurePage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Asterisk) {
            return true;
        }
        if (key->matches(QKeySequence::Copy)) {
            CopyMarked();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
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

void CStructurePage::CopyMarked() {
    const auto octets = m_model->Octets().subspan(m_octets->MarkedBegin(),
                                                  m_octets->MarkedEnd() - m_octets->MarkedBegin());
    QGuiApplication::clipboard()->setText(QString::fromStdWString(Hex(octets)));
}

}  // namespace ca
