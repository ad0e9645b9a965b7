#include "module/viewer/PathPage.h"

#include "module/viewer/ItemKinds.h"
#include "module/viewer/ViewerText.h"
#include "records/fill/CertInfoFill.h"

#include <QHeaderView>
#include <QStyle>
#include <QVBoxLayout>

namespace {

using namespace ca;

constexpr int kIndexRole = Qt::UserRole;
constexpr int kNameWidth = 44;  // characters

// Its verdict and, of the last one, its issuer: what the path has no other record of.
CertInfo RecordOf(const CFileDocument& document, ItemIndex item) {
    CertInfo record;
    if (const CertInfo2* known = document.RecordOf(item)) {
        record = *known;
    } else {
        FillCertInfo(document[item].octets, record);
    }
    return record;
}

QString EndText(const CFileDocument& document, const ItemPath& path) {
    switch (path.end) {
        case PathEnd::kRoot:
            return Word(ViewerWord::kPathRoot);
        case PathEnd::kNoIssuer:
            return Word(ViewerWord::kPathNoIssuer) +
                   OrDash(ShownLine(RecordOf(document, path.items.back()).issuer.readable));
        case PathEnd::kRepeats:
            return Word(ViewerWord::kPathRepeats);
        case PathEnd::kTooLong:
            return Word(ViewerWord::kPathTooLong);
        case PathEnd::kNoSigner:
            return Word(ViewerWord::kPathNoSigner);
        default:
            return {};
    }
}

}  // namespace

namespace ca {

CPathPage::CPathPage(QWidget* parent)
    : QWidget(parent), m_hint(new QLabel), m_tree(new QTreeWidget), m_end(new QLabel) {
    m_hint->setBuddy(m_tree);
    m_hint->setWordWrap(true);
    m_tree->setObjectName("pathTree");
    m_tree->setColumnCount(2);
    m_tree->setUniformRowHeights(true);
    m_tree->setAllColumnsShowFocus(true);
    m_tree->setItemsExpandable(false);
    m_tree->setColumnWidth(0, kNameWidth * fontMetrics().averageCharWidth());
    m_end->setObjectName("pathEndText");
    m_end->setTextFormat(Qt::PlainText);
    m_end->setWordWrap(true);
    m_end->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_hint);
    column->addWidget(m_tree, 1);
    column->addWidget(m_end);
    const auto choose = [this](const QModelIndex& at) {
        Q_EMIT Chosen(at.siblingAtColumn(0).data(kIndexRole).toInt());
    };
    connect(m_tree, &QTreeWidget::clicked, this, choose);
    connect(m_tree, &QTreeWidget::activated, this, choose);
}

void CPathPage::ShowPath(const CFileDocument& document, const ItemPath& path, ItemIndex shown) {
    m_tree->clear();
    QTreeWidgetItem* above = m_tree->invisibleRootItem();
    for (std::size_t index = path.items.size(); index-- > 0;) {
        const ItemIndex certificate = path.items[index];
        auto* item = new QTreeWidgetItem(above);
        item->setText(0, OrDash(ListedName(document, certificate)));
        QString status = ShownLine(RecordOf(document, certificate).validity);
        if (certificate == shown) {
            status = MessageText(kMsgDlgShown) + (status.isEmpty() ? "" : "; ") + status;
            QFont font = item->font(0);
            font.setBold(true);
            item->setFont(0, font);
            item->setIcon(0, style()->standardIcon(QStyle::SP_ArrowRight, nullptr, this));
            m_tree->setCurrentItem(item);
        }
        item->setText(1, status);
        item->setData(0, kIndexRole, static_cast<int>(index));
        above = item;
    }
    m_tree->expandAll();  // as many levels as a path may have
    m_end->setText(EndText(document, path));
}

void CPathPage::Translate() {
    m_hint->setText(MessageText(kMsgDlgPathHint));
    m_tree->setHeaderLabels({MessageText(kMsgFieldSubject), MessageText(kMsgOcspStatus)});
    m_tree->setAccessibleName(MessageText(kMsgDlgPath).remove('&'));
}

}  // namespace ca
