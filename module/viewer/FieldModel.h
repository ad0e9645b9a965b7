#pragma once

#include "module/viewer/RecordFields.h"

#include <QAbstractItemModel>
#include <QSortFilterProxyModel>

#include <cstdint>

namespace ca {

/// The fields of a certificate for a tree view: label and first line of the value.
class CFieldModel : public QAbstractItemModel {
    Q_OBJECT
  public:
    /// Role of the whole text of a field.
    static constexpr int kFullText = Qt::UserRole;

    using QAbstractItemModel::QAbstractItemModel;

    void SetFields(CRecordFields fields);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& = {}) const override { return 2; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// The texts of the header; both follow SetHeaders().
    void SetHeaders(const QString& label, const QString& value);

  private:
    const RecordField& FieldOf(const QModelIndex& index) const;

    CRecordFields m_fields;
    std::uint32_t m_language = 0;  // of the fields
    QString m_headers[2];
};

/// Shows the fields whose label or text holds what is searched for, those above them, and all that
/// is nested in a field whose label holds it.
class CFieldFilter : public QSortFilterProxyModel {
    Q_OBJECT
  public:
    explicit CFieldFilter(QObject* parent = nullptr);

    /// "" shows everything.
    void SetWanted(const QString& text);

    /// Whether the field itself, label or text, holds the text searched for.
    bool Matches(const QModelIndex& sourceIndex) const;

  protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

  private:
    bool Holds(const QModelIndex& index, int role) const;

    QString m_wanted;
};

}  // namespace ca
