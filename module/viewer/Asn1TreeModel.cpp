#include "module/viewer/Asn1TreeModel.h"

#include "asn1/Asn1Tags.h"
#include "asn1/BlockText.h"
#include "common/Lng.h"
#include "module/viewer/ViewerText.h"
#include "records/text/OutlineText.h"
#include "records/text/VisibleText.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t kMaxValue = 120;      // characters
constexpr std::size_t kMaxSearched = 1000;  // of a value
// An index holds the address of its block; of a row that says what is left out, that of the block
// above with this bit set.
constexpr quintptr kNoteBit = 1;

quintptr IdOf(const CAsn1Block* block) {
    return reinterpret_cast<quintptr>(block);
}

bool IsNote(const QModelIndex& index) {
    return (index.internalId() & kNoteBit) != 0;
}

}  // namespace

namespace ca {

void CAsn1TreeModel::SetOctets(std::vector<unsigned char> octets) {
    beginResetModel();
    m_enclosed.Clear();
    m_octets = std::move(octets);
    // Read on past wrong lengths: a damaged file is what people open this page for.
    m_parser.Parse(m_octets.data(), static_cast<unsigned>(m_octets.size()),
                   /*stopAtTruncation=*/true, /*continueOnLengthMismatch=*/true,
                   /*singleRoot=*/false);
    endResetModel();
}

void CAsn1TreeModel::SetLanguage(std::uint32_t language) {
    m_language = language;
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, kColumns - 1);
    // Texts of every row change, their number does not: what is open and selected stays.
    Q_EMIT dataChanged({}, {});
}

CAsn1TreeModel::Range CAsn1TreeModel::RangeOf(const QModelIndex& index) const {
    return index.isValid() && !IsNote(index) ? RangeOf(*BlockOf(index)) : Range{};
}

std::span<const unsigned char> CAsn1TreeModel::OctetsOf(const QModelIndex& index) const {
    const Range range = RangeOf(index);
    return Octets().subspan(range.begin, range.end - range.begin);
}

QString CAsn1TreeModel::WholeValue(const QModelIndex& index) const {
    if (!index.isValid() || IsNote(index)) {
        return {};
    }
    const CLanguageScope scope(m_language);
    const CAsn1Block& block = *BlockOf(index);
    // Hexadecimal digits take the most characters for an octet.
    return ShownText(BlockText(block, 2 * block.GetRawContent().size() + kMaxValue));
}

bool CAsn1TreeModel::Holds(const QModelIndex& index, const QString& wanted) const {
    if (IsNote(index)) {
        return false;
    }
    const CLanguageScope scope(m_language);
    const CAsn1Block& block = *BlockOf(index);
    return QString::fromStdString(TagText(block.tag)).contains(wanted, Qt::CaseInsensitive) ||
           QString::fromStdWString(BlockText(block, kMaxSearched))
               .contains(wanted, Qt::CaseInsensitive);
}

QModelIndex CAsn1TreeModel::Next(const QModelIndex& from, bool forward) const {
    const auto lastBelow = [this](QModelIndex at) {
        for (int rows = rowCount(at); rows != 0; rows = rowCount(at)) {
            at = index(rows - 1, 0, at);
        }
        return at;
    };
    QModelIndex at = from.siblingAtColumn(0);
    if (!at.isValid()) {
        return index(0, 0);
    }
    if (!forward) {
        const QModelIndex before = at.siblingAtRow(at.row() - 1);
        const QModelIndex above = before.isValid() ? lastBelow(before) : parent(at);
        return above.isValid() ? above : lastBelow({});
    }
    if (rowCount(at) != 0) {
        return index(0, 0, at);
    }
    for (; at.isValid(); at = parent(at)) {
        if (const QModelIndex behind = index(at.row() + 1, 0, parent(at)); behind.isValid()) {
            return behind;
        }
    }
    return index(0, 0);
}

QModelIndex CAsn1TreeModel::InnermostAt(std::size_t offset) const {
    if (offset >= m_octets.size()) {
        return {};
    }
    const unsigned char* const wanted = m_octets.data() + offset;
    const CAsn1Block* found = nullptr;
    Blocks blocks = Roots();
    // Down to where rows are shown; what lies deeper or farther has no row to select.
    for (int depth = 0; depth <= kMaxDepth && !blocks.empty(); ++depth) {
        const auto behind = std::ranges::upper_bound(blocks, wanted, {}, &CAsn1Block::start);
        const auto count = static_cast<std::size_t>(behind - blocks.begin());
        if (count == 0 || count > kMaxRows || offset >= RangeOf(*blocks[count - 1]).end) {
            break;
        }
        found = blocks[count - 1];
        blocks = Below(found);
    }
    return found != nullptr ? IndexOf(*found, kElement) : QModelIndex();
}

QModelIndex CAsn1TreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) {
        return {};
    }
    const CAsn1Block* above = BlockOf(parent);
    const Blocks blocks = Below(above);
    const bool isNote = row == kMaxRows || (above != nullptr && IsTooDeep(*above));
    return createIndex(
        row, column, isNote ? IdOf(above) | kNoteBit : IdOf(blocks[static_cast<std::size_t>(row)]));
}

QModelIndex CAsn1TreeModel::parent(const QModelIndex& child) const {
    if (!child.isValid()) {
        return {};
    }
    const CAsn1Block* block = BlockOf(child);
    const CAsn1Block* above = IsNote(child) ? block : Above(*block);
    return above != nullptr ? IndexOf(*above, 0) : QModelIndex();
}

int CAsn1TreeModel::rowCount(const QModelIndex& parent) const {
    if (parent.column() > 0 || (parent.isValid() && IsNote(parent))) {
        return 0;
    }
    const CAsn1Block* block = BlockOf(parent);
    const std::size_t count = Below(block).size();
    if (count != 0 && block != nullptr && IsTooDeep(*block)) {
        return 1;
    }
    return static_cast<int>(std::min<std::size_t>(count, kMaxRows + 1));
}

bool CAsn1TreeModel::hasChildren(const QModelIndex& parent) const {
    return parent.column() <= 0 && !(parent.isValid() && IsNote(parent)) &&
           !Below(BlockOf(parent)).empty();
}

QVariant CAsn1TreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const CLanguageScope scope(m_language);
    if (role == Qt::DisplayRole && IsNote(index)) {
        return index.column() == kElement ? NoteText(index) : QVariant();
    }
    if (IsNote(index)) {
        return {};
    }
    const CAsn1Block& block = *BlockOf(index);
    switch (role) {
        case Qt::DisplayRole:
            return Text(block, index.column());
        case Qt::DecorationRole:
            return block.corrupted && index.column() == kElement ? QVariant(m_damageIcon)
                                                                 : QVariant();
        case Qt::TextAlignmentRole:
            return index.column() >= kOffset ? QVariant(Qt::AlignRight | Qt::AlignVCenter)
                                             : QVariant();
        case Qt::AccessibleTextRole:
            return QString::fromStdString(TagText(block.tag)) + " " + ValueText(block);
        default:
            return {};
    }
}

QVariant CAsn1TreeModel::headerData(int section, Qt::Orientation orientation, int role) const {
    static constexpr Sentence kHeaders[kColumns] = {kMsgDlgElement, kMsgDlgValue, kMsgDlgOffset,
                                                    kMsgDlgLength};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 ||
        section >= kColumns) {
        return {};
    }
    const CLanguageScope scope(m_language);
    return MessageText(kHeaders[section]);
}

// Of a note: the block above it. Null for no index, which stands for what is above the roots.
const CAsn1Block* CAsn1TreeModel::BlockOf(const QModelIndex& index) const {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): an index holds nothing but a number
    return index.isValid() ? reinterpret_cast<const CAsn1Block*>(index.internalId() & ~kNoteBit)
                           : nullptr;
}

const CAsn1Block* CAsn1TreeModel::Above(const CAsn1Block& block) const {
    return block.parent != nullptr ? block.parent : m_enclosed.Around(block);
}

// Blocks are read from front to back, so those of one parent are in the order of their places.
QModelIndex CAsn1TreeModel::IndexOf(const CAsn1Block& block, int column) const {
    const Blocks blocks = Below(Above(block));
    const auto place = std::ranges::lower_bound(blocks, block.start, {}, &CAsn1Block::start);
    // A search, since a block does not know its row and there may be thousands beside it.
    return createIndex(static_cast<int>(place - blocks.begin()), column, IdOf(&block));
}

CAsn1TreeModel::Blocks CAsn1TreeModel::Below(const CAsn1Block* block) const {
    if (block == nullptr) {
        return Roots();
    }
    return block->GetInnerBlockCount() != 0 ? block->GetInnerBlocks() : m_enclosed.Of(*block);
}

// A root that is cut before its length has no place: it is left out.
CAsn1TreeModel::Blocks CAsn1TreeModel::Roots() const {
    Blocks roots = m_parser.GetRoots();
    while (!roots.empty() && roots.back()->start == nullptr) {
        roots = roots.first(roots.size() - 1);
    }
    return roots;
}

bool CAsn1TreeModel::IsTooDeep(const CAsn1Block& block) const {
    int depth = 0;
    // Bounded by kMaxDepth, not by the depth that the file chose.
    for (const CAsn1Block* at = &block; at != nullptr && depth <= kMaxDepth; at = Above(*at)) {
        ++depth;
    }
    return depth > kMaxDepth;
}

// Constant time: the end of a block of indefinite length is where its children left off.
CAsn1TreeModel::Range CAsn1TreeModel::RangeOf(const CAsn1Block& block) const {
    if (block.start == nullptr) {
        return {};
    }
    const auto begin = static_cast<std::size_t>(block.start - m_octets.data());
    const std::size_t content = begin + HeaderLength(block);
    const std::size_t whole = begin + block.GetAvailable();
    if (const auto announced = AnnouncedLength(block)) {
        return {begin, content, std::min(content + *announced, whole)};
    }
    const std::size_t end = content + block.contentLength;
    const bool isEnded = block.isUnknownLength && !block.corrupted && end + 2 <= whole &&
                         m_octets[end] == 0 && m_octets[end + 1] == 0;
    return {begin, content, isEnded ? end + 2 : whole};
}

QVariant CAsn1TreeModel::Text(const CAsn1Block& block, int column) const {
    const Range range = RangeOf(block);
    switch (column) {
        case kElement:
            return QString::fromStdString(TagText(block.tag));
        case kValue:
            return ValueText(block);
        case kOffset:
            return static_cast<qulonglong>(range.begin);
        default:
            return static_cast<qulonglong>(range.end - range.begin);
    }
}

QString CAsn1TreeModel::ValueText(const CAsn1Block& block) const {
    QString text = block.corrupted ? MessageText(kMsgDlgDamaged) + " " : QString();
    if (block.IsConstructed()) {
        return text + MessageText(kMsgDlgElements) + QString::number(block.GetInnerBlockCount());
    }
    return text + ShownLine(Visible(BlockText(block, kMaxValue)), kMaxValue);
}

QString CAsn1TreeModel::NoteText(const QModelIndex& note) const {
    const CAsn1Block* above = BlockOf(note);
    if (above != nullptr && IsTooDeep(*above)) {
        return MessageText(kMsgDlgTooDeep);
    }
    const std::size_t left = Below(above).size() - kMaxRows;
    return MessageText(kMsgAndMore).replace('N', QString::number(left));
}

}  // namespace ca
