#include "module/viewer/FileModel.h"

#include "common/Lng.h"
#include "module/viewer/ItemKinds.h"

#include <algorithm>

namespace {

constexpr int kMaxNames = 4096;

}  // namespace

namespace ca {

void CFileModel::SetDocument(const CFileDocument* document, std::uint32_t language) {
    beginResetModel();
    m_document = document;
    m_language = language;
    m_names.clear();
    endResetModel();
}

ItemIndex CFileModel::ItemOf(const QModelIndex& index) {
    return index.isValid() ? static_cast<ItemIndex>(index.internalId()) : kNoItem;
}

QModelIndex CFileModel::IndexOf(ItemIndex item) const {
    const bool isShown =
        m_document != nullptr && item != kNoItem &&
        ((*m_document)[item].kind != ItemKind::kFile || m_document->Files().size() > 1);
    if (!isShown) {
        return {};
    }
    const std::vector<ItemIndex>& files = m_document->Files();
    const bool isFile = (*m_document)[item].kind == ItemKind::kFile;
    const auto row = isFile ? std::ranges::lower_bound(files, item) - files.begin()
                            : std::ptrdiff_t{(*m_document)[item].row};
    return createIndex(static_cast<int>(row), 0, static_cast<quintptr>(item));
}

const std::vector<ItemIndex>& CFileModel::Below(const QModelIndex& parent) const {
    if (m_document == nullptr || m_document->IsEmpty()) {
        return m_none;
    }
    if (parent.isValid()) {
        return (*m_document)[ItemOf(parent)].children;
    }
    const std::vector<ItemIndex>& files = m_document->Files();
    return files.size() > 1 ? files : (*m_document)[files.front()].children;
}

QModelIndex CFileModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) {
        return {};
    }
    return createIndex(row, column,
                       static_cast<quintptr>(Below(parent)[static_cast<std::size_t>(row)]));
}

QModelIndex CFileModel::parent(const QModelIndex& child) const {
    return child.isValid() ? IndexOf((*m_document)[ItemOf(child)].parent) : QModelIndex();
}

int CFileModel::rowCount(const QModelIndex& parent) const {
    return parent.column() > 0 ? 0 : static_cast<int>(Below(parent).size());
}

QVariant CFileModel::data(const QModelIndex& index, int role) const {
    const ItemIndex item = ItemOf(index);
    if (item == kNoItem) {
        return {};
    }
    if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole) {
        return NameOf(item);
    }
    if (role == Qt::ToolTipRole) {  // a tip takes what looks like markup for markup
        return QString("<qt>" + NameOf(item).toHtmlEscaped() + "</qt>");
    }
    const FileItem& shown = (*m_document)[item];
    const bool isDamaged =
        shown.kind == ItemKind::kUnreadable || (shown.note != nullptr && shown.note->cut);
    return role == Qt::DecorationRole && isDamaged ? QVariant(m_damageIcon) : QVariant();
}

const QString& CFileModel::NameOf(ItemIndex item) const {
    if (m_names.size() > kMaxNames) {
        m_names.clear();
    }
    const auto known = m_names.constFind(item);
    if (known != m_names.constEnd()) {
        return *known;
    }
    const CLanguageScope scope(m_language);
    return *m_names.insert(item, ListedName(*m_document, item));
}

}  // namespace ca
