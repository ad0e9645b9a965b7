#pragma once

#include "asn1/CryptAsn1Parser.h"
#include "asn1/EnclosedBlocks.h"

#include <QAbstractItemModel>
#include <QIcon>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace ca {

/// The blocks of BER octets for a tree view. Nothing is made for a row: an index leads to the
/// parser's own block. What an OCTET STRING or BIT STRING encloses is parsed when it is asked for
/// and stands below it. Levels and the rows of one block are bounded; where something is left out
/// the last row says so. One thread.
class CAsn1TreeModel : public QAbstractItemModel {
    Q_OBJECT
  public:
    enum Column { kElement, kValue, kOffset, kLength, kColumns };
    static constexpr int kMaxDepth = 1000;
    static constexpr int kMaxRows = 1 << 18;

    /// Octets of a block: [begin, end), its content from `content` on.
    struct Range {
        std::size_t begin = 0;
        std::size_t content = 0;
        std::size_t end = 0;
    };

    explicit CAsn1TreeModel(QObject* parent = nullptr) : QAbstractItemModel(parent) {}

    void SetOctets(std::vector<unsigned char> octets);
    /// Valid until the next SetOctets().
    std::span<const unsigned char> Octets() const { return m_octets; }
    /// Language of the texts, 0 for the process's; tells the views.
    void SetLanguage(std::uint32_t language);
    /// The mark of damaged blocks.
    void SetDamageIcon(const QIcon& icon) { m_damageIcon = icon; }

    /// Where the block of an index stands; all zero for a row without a block.
    Range RangeOf(const QModelIndex& index) const;
    /// The octets of an index's block; none for a row without one.
    std::span<const unsigned char> OctetsOf(const QModelIndex& index) const;
    /// The value of an index's block, all of it; "" for a row without one.
    QString WholeValue(const QModelIndex& index) const;
    /// Whether name or value hold a text, whatever the case of its letters. Of long values the
    /// beginning is looked at.
    bool Holds(const QModelIndex& index, const QString& wanted) const;
    /// The row below or above in a tree that is open everywhere; from the last to the first.
    QModelIndex Next(const QModelIndex& index, bool forward) const;
    /// The innermost block shown that holds the octet; invalid when there is none.
    QModelIndex InnermostAt(std::size_t offset) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& = {}) const override { return kColumns; }
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    using Blocks = std::span<CAsn1Block* const>;

    const CAsn1Block* BlockOf(const QModelIndex& index) const;
    const CAsn1Block* Above(const CAsn1Block& block) const;
    QModelIndex IndexOf(const CAsn1Block& block, int column) const;
    Blocks Roots() const;
    Blocks Below(const CAsn1Block* block) const;
    bool IsTooDeep(const CAsn1Block& block) const;
    Range RangeOf(const CAsn1Block& block) const;
    QVariant Text(const CAsn1Block& block, int column) const;
    QString ValueText(const CAsn1Block& block) const;
    QString NoteText(const QModelIndex& note) const;

    std::vector<unsigned char> m_octets;
    CCryptAsn1Parser m_parser;
    mutable CEnclosedBlocks m_enclosed;  // grows as views ask
    std::uint32_t m_language = 0;
    QIcon m_damageIcon;
};

}  // namespace ca
