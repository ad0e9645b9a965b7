#pragma once

#include "module/viewer/CrlIndex.h"

#include <QAbstractTableModel>
#include <QString>

#include <cstdint>
#include <vector>

namespace ca {

/// The entries of a revocation list for a table view. Those in sight are described, a screen or so
/// of them kept: a million cost no more than their octets. One thread.
class CEntriesModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    enum Column { kNumber, kSerial, kDate, kReason, kInvalidity, kIssuer, kColumns };

    explicit CEntriesModel(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

    /// \param list  outlives the model, or the next call; empty for none.
    void SetList(std::span<const unsigned char> list);
    /// Language of the texts, 0 for the process's; tells the views.
    void SetLanguage(std::uint32_t language);

    /// All that is said of an entry, as text.
    QString TextOf(int row) const;
    /// The entry whose serial number has these digits: `row` or one after it, else one from the
    /// first on; backwards one before it, else one from the last on. -1 for none. Blanks and colons
    /// do not count.
    int FindSerial(const QString& digits, int row, bool forward) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& = {}) const override { return kColumns; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    struct Described {
        int row = -1;
        RevokedCert record;
        std::wstring faults;
    };

    const Described& Entry(int row) const;

    CCrlIndex m_index;
    std::uint32_t m_language = 0;
    mutable std::vector<Described> m_kept;  // each row has one place
};

}  // namespace ca
