#include "asn1/Asn1Block.h"

#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Log.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace {

constexpr std::uint64_t kMaxLength = std::numeric_limits<std::uint32_t>::max();

// Octets round the content when written: identifier, length and end-of-contents.
std::uint64_t FrameLength(const CAsn1Block& block) {
    return block.isUnknownLength ? 4 : 2 + GetBytesCount(block.contentLength);
}

}  // namespace

std::uint32_t CheckedAsn1Length(std::uint64_t length) {
    // Lengths are summed in 64 bits and given out in 32, as the interface has them: here no wrap
    // passes unseen.
    if (length > kMaxLength) {
        ca::LogError(L"CAsn1Block::GetTotalLength", CA_HERE, ca::kErrAsn1Corrupted,
                     /*throwIt=*/true);
    }
    return static_cast<std::uint32_t>(length);
}

CAsn1Block* FindBlockByPath(std::span<CAsn1Block* const> level, const std::wstring& path) {
    std::vector<std::wstring> items;
    ca::Split(path, L"/", items);
    std::vector<int> indices;
    indices.reserve(items.size());
    for (const std::wstring& item : items) {
        indices.push_back(std::stoi(item));
    }
    CAsn1Block* found = nullptr;
    for (const int index : indices) {
        if (index < 0 || static_cast<std::size_t>(index) >= level.size()) {
            return nullptr;
        }
        found = level[static_cast<std::size_t>(index)];
        level = found->GetInnerBlocks();
    }
    return found;
}

unsigned int CAsn1Block::GetTotalLength(bool recompute) {
    if (recompute && m_childCount != 0) {
        struct Level {
            CAsn1Block* block;
            std::size_t next;
            std::uint64_t length;
        };
        // Not by recursion: the depth of a tree is a stranger's choice.
        std::vector<Level> open{{this, 0, 0}};
        while (!open.empty()) {
            Level& level = open.back();
            CAsn1Block* child = level.block->GetInnerBlock(level.next);
            if (child == nullptr) {
                CAsn1Block& block = *level.block;
                block.contentLength = CheckedAsn1Length(level.length);
                block.totalLength = CheckedAsn1Length(level.length + FrameLength(block));
                open.pop_back();
                if (!open.empty()) {
                    open.back().length += block.totalLength;
                }
                continue;
            }
            ++level.next;
            // An object was detached from it: it is not written, so it does not count.
            if (child->excluded) {
                continue;
            }
            if (child->m_childCount != 0) {
                open.push_back({child, 0, 0});
            } else {
                level.length += child->GetTotalLength(/*recompute=*/false);
            }
        }
        return totalLength;
    }
    if (m_childCount == 0) {
        // Less than stated where a truncation ended the parse.
        contentLength = static_cast<std::uint32_t>(GetRawContent().size());
    }
    totalLength = CheckedAsn1Length(contentLength + FrameLength(*this));
    return totalLength;
}

std::span<const unsigned char> CAsn1Block::GetRawEncoding() const {
    // A block that was cut off announces more than the buffer holds.
    return {start, start != nullptr ? std::min(totalLength, m_available) : 0};
}

void CAsn1Block::SetRawEncoding(std::span<const unsigned char> encoding) {
    start = encoding.data();
    totalLength = static_cast<std::uint32_t>(encoding.size());
    m_available = totalLength;
}

void CAsn1Block::AppendInnerBlock(CAsn1Block* block) {
    // A loose block knows its parent, but the parent does not list it: ImportInnerBlock() makes
    // such.
    const bool listed = block->parent != nullptr && !block->m_loose;
    if (listed && block->parent == this) {
        return;
    }
    // First what may fail: without memory the block stays where it was.
    ReserveChild();
    if (listed) {
        block->parent->TakeInnerBlock(block).release();  // from one owner to the other
    }
    block->m_loose = false;
    block->parent = this;
    m_children->items[m_childCount++] = block;
}

std::unique_ptr<CAsn1Block> CAsn1Block::TakeInnerBlock(CAsn1Block* child) {
    const auto children = GetInnerBlocks();
    const auto found = std::find(children.begin(), children.end(), child);
    if (found == children.end()) {
        return nullptr;
    }
    CAsn1Block** place = m_children->items + (found - children.begin());
    std::copy(place + 1, m_children->items + m_childCount, place);
    --m_childCount;
    child->parent = nullptr;
    return std::unique_ptr<CAsn1Block>(child);
}

CAsn1Block* CAsn1Block::GetBlockByTag(unsigned int wanted, std::size_t from) const {
    for (std::size_t i = from; i < m_childCount; ++i) {
        if (m_children->items[i]->tag == wanted) {
            return m_children->items[i];
        }
    }
    return nullptr;
}

CAsn1Block* CAsn1Block::GetBlockBySpecificIdx(unsigned int idx, std::size_t from) const {
    for (std::size_t i = from; i < m_childCount; ++i) {
        CAsn1Block* child = m_children->items[i];
        if ((child->IsContextSpecific() && child->GetContextSpecificIndex() == idx) ||
            (child->IsApplicationSpecific() && child->GetApplicationSpecificIndex() == idx)) {
            return child;
        }
    }
    return nullptr;
}

CAsn1Block* CAsn1Block::GetBlockByPath(const std::wstring& path) const {
    return FindBlockByPath(GetInnerBlocks(), path);
}
