#include "module/viewer/PathPage.h"

#include "module/viewer/CertFields.h"
#include "module/viewer/ViewerText.h"

#include <QHeaderView>
#include <QStyle>
#include <QVBoxLayout>

namespace {

constexpr int kIndexRole = Qt::UserRole;
constexpr int kNameWidth = 340;  // pixels

}  // namespace

namespace ca {

CPathPage::CPathPage(QWidget* parent)
    : QWidget(parent), m_hint(new QLabel), m_tree(new QTreeWidget) {
    m_hint->setBuddy(m_tree);
    m_hint->setWordWrap(true);
    m_tree->setObjectName("pathTree");
    m_tree->setColumnCount(2);
    m_tree->setUniformRowHeights(true);
    m_tree->setAllColumnsShowFocus(true);
    m_tree->setItemsExpandable(false);
    m_tree->setColumnWidth(0, kNameWidth);
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_hint);
    column->addWidget(m_tree, 1);
    const auto choose = [this](const QModelIndex& at) {
        Q_EMIT Chosen(at.siblingAtColumn(0).data(kIndexRole).toInt());
    };
    connect(m_tree, &QTreeWidget::clicked, this, choose);
    connect(m_tree, &QTreeWidget::activated, this, choose);
}

void CPathPage::ShowPath(const CCertDocument& document, std::size_t current) {
    m_tree->clear();
    QTreeWidgetItem* above = m_tree->invisibleRootItem();
    for (std::size_t index = document.Count(); index-- > 0;) {
        const CertInfo& record = document.Record(index);
        auto* item = new QTreeWidgetItem(above);
        item->setText(0, OrDash(ShortName(record.subjectTags, record.description)));
        QString status = ShownLine(record.validity);
        if (index == current) {
            status = MessageText(kMsgDlgShown) + (status.isEmpty() ? "" : "; ") + status;
            QFont font = item->font(0);
            font.setBold(true);
            item->setFont(0, font);
            item->setIcon(0, style()->standardIcon(QStyle::SP_ArrowRight, nullptr, this));
            m_tree->setCurrentItem(item);
        }
        item->setText(1, status);
        item->setData(0, kIndexRole, static_cast<int>(index));
        item->setExpanded(true);
        above = item;
    }
    m_tree->expandAll();  // as many levels as a record may nest
}

void CPathPage::Translate() {
    m_hint->setText(MessageText(kMsgDlgPathHint));
    m_tree->setHeaderLabels({MessageText(kMsgFieldSubject), MessageText(kMsgOcspStatus)});
    m_tree->setAccessibleName(MessageText(kMsgDlgPath).remove('&'));
}

}  // namespace ca
