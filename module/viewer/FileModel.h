#pragma once

#include "module/viewer/FileDocument.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QIcon>

#include <cstdint>
#include <vector>

namespace ca {

/// The items of a document for a tree view; with one file its items, with several the files above
/// theirs. An item is named when a view asks for it. One thread.
class CFileModel : public QAbstractItemModel {
    Q_OBJECT
  public:
    explicit CFileModel(QObject* parent = nullptr) : QAbstractItemModel(parent) {}

    /// \param document  outlives the model, or the next call; null for none. Tells the views, and
    ///                  has to be called when the document or the language changes.
    void SetDocument(const CFileDocument* document, std::uint32_t language);
    /// The mark of what is not whole.
    void SetDamageIcon(const QIcon& icon) { m_damageIcon = icon; }

    /// kNoItem for an invalid index.
    static ItemIndex ItemOf(const QModelIndex& index);
    QModelIndex IndexOf(ItemIndex item) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& = {}) const override { return 1; }
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    const std::vector<ItemIndex>& Below(const QModelIndex& parent) const;
    const QString& NameOf(ItemIndex item) const;

    const CFileDocument* m_document = nullptr;
    std::uint32_t m_language = 0;
    QIcon m_damageIcon;
    std::vector<ItemIndex> m_none;
    mutable QHash<ItemIndex, QString> m_names;  // of those that were in sight
};

}  // namespace ca
