#include "module/viewer/FieldModel.h"

#include "common/Lng.h"
#include "module/viewer/ViewerText.h"

#include <utility>

namespace {

// With a mark when there is more.
QString FirstLine(const QString& text) {
    const int end = text.indexOf('\n');
    return end < 0 ? ca::LaidOut(text, ca::kMaxLineText)
                   : ca::LaidOut(text.left(end), ca::kMaxLineText) + QChar(0x2026);
}

}  // namespace

namespace ca {

void CFieldModel::SetFields(CRecordFields fields) {
    beginResetModel();
    m_fields = std::move(fields);
    m_language = GetZORNALng();
    endResetModel();
}

void CFieldModel::SetHeaders(const QString& label, const QString& value) {
    m_headers[0] = label;
    m_headers[1] = value;
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, 1);
}

QModelIndex CFieldModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) {
        return {};
    }
    const std::size_t field = FieldOf(parent).children[static_cast<std::size_t>(row)];
    return createIndex(row, column, static_cast<quintptr>(field));
}

QModelIndex CFieldModel::parent(const QModelIndex& child) const {
    if (!child.isValid() || FieldOf(child).parent == CRecordFields::kRoot) {
        return {};
    }
    const std::size_t above = FieldOf(child).parent;
    return createIndex(static_cast<int>(m_fields[above].row), 0, static_cast<quintptr>(above));
}

int CFieldModel::rowCount(const QModelIndex& parent) const {
    return parent.column() > 0 ? 0 : static_cast<int>(FieldOf(parent).children.size());
}

QVariant CFieldModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const CLanguageScope scope(m_language);
    const RecordField& field = FieldOf(index);
    switch (role) {
        case Qt::DisplayRole:
            return index.column() == 0 ? field.label : FirstLine(field.text);
        case Qt::AccessibleTextRole:
            return QString(field.label + ": " + field.text.left(kMaxLineText));
        case kFullText:
            return field.text;
        default:
            return {};
    }
}

QVariant CFieldModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const bool isShown = orientation == Qt::Horizontal && role == Qt::DisplayRole;
    return isShown && section >= 0 && section < 2 ? QVariant(m_headers[section]) : QVariant();
}

const RecordField& CFieldModel::FieldOf(const QModelIndex& index) const {
    return m_fields[index.isValid() ? static_cast<std::size_t>(index.internalId())
                                    : CRecordFields::kRoot];
}

CFieldFilter::CFieldFilter(QObject* parent) : QSortFilterProxyModel(parent) {
    setRecursiveFilteringEnabled(true);
}

void CFieldFilter::SetWanted(const QString& text) {
    m_wanted = text;
    invalidateFilter();
}

bool CFieldFilter::Matches(const QModelIndex& sourceIndex) const {
    const QModelIndex label = sourceIndex.siblingAtColumn(0);
    return Holds(label, Qt::DisplayRole) || Holds(label, CFieldModel::kFullText);
}

bool CFieldFilter::filterAcceptsRow(int row, const QModelIndex& parent) const {
    for (QModelIndex above = parent; above.isValid(); above = above.parent()) {
        if (Holds(above, Qt::DisplayRole)) {
            return true;
        }
    }
    return Matches(sourceModel()->index(row, 0, parent));
}

bool CFieldFilter::Holds(const QModelIndex& index, int role) const {
    return index.data(role).toString().contains(m_wanted, Qt::CaseInsensitive);
}

}  // namespace ca
