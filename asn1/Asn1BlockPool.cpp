#include "asn1/Asn1BlockPool.h"

#include "common/ForkMutex.h"

#include <algorithm>
#include <limits>
#include <mutex>
#include <utility>

namespace {

#ifdef __has_feature
#if __has_feature(address_sanitizer)
#define CA_SEES_FREED_MEMORY 1
#endif
#endif
#ifdef __SANITIZE_ADDRESS__
#define CA_SEES_FREED_MEMORY 1
#endif

// Octets in front of a slab's pieces: its counter and its size.
constexpr std::size_t kSlabHead = 8;
constexpr std::size_t kFirstChildren = 4;  // room for children added one by one, doubled as needed
// Octets; a slab grows from the first to the second, so that small trees stay small.
constexpr std::size_t kMinSlab = 1024;
constexpr std::size_t kMaxSlab = 512 * 1024 - 64;  // with the heap's own head: whole pages
// What an open slab counts in advance; replaced by the true number when it is closed.
constexpr std::uint32_t kOpen = 1U << 31;

#ifdef CA_SEES_FREED_MEMORY
constexpr std::size_t kKeptSlabs = 0;  // what is kept would hide the use of a tree that is gone
#else
constexpr std::size_t kKeptSlabs = CAsn1BlockPool::kKeptOctets / kMaxSlab;
#endif

static_assert(sizeof(CAsn1Block) == 56);  // millions of them make a tree

}  // namespace

class CAsn1BlockPool::Store {
  public:
    Store() = default;
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;
    // Slabs of trees that end later are freed at once.
    ~Store() { KeepAtMost(0); }

    void KeepAtMost(std::size_t slabs) noexcept {
        const std::lock_guard lock(m_mutex);
        m_most = slabs;
        for (; m_count > m_most; --m_count) {
            ::operator delete(std::exchange(m_first, m_first->next));
        }
    }
    /// Memory of kMaxSlab octets, null when none is kept.
    void* Take() noexcept {
        const std::lock_guard lock(m_mutex);
        if (m_first == nullptr) {
            return nullptr;
        }
        --m_count;
        return std::exchange(m_first, m_first->next);
    }
    /// False when no more is to be kept.
    bool Keep(void* slab) noexcept {
        const std::lock_guard lock(m_mutex);
        if (m_count >= m_most) {
            return false;
        }
        ++m_count;
        m_first = new (slab) Kept{m_first};
        return true;
    }

  private:
    struct Kept {
        Kept* next;
    };
    ca::CForkMutex m_mutex;
    Kept* m_first = nullptr;
    std::size_t m_count = 0;
    std::size_t m_most = kKeptSlabs;
};

CAsn1BlockPool::Store CAsn1BlockPool::s_store;

class CAsn1BlockPool::Returner {
  public:
    Returner() = default;
    Returner(const Returner&) = delete;
    Returner& operator=(const Returner&) = delete;
    ~Returner() { Flush(); }

    // Pieces of one slab mostly come one after the other: its counter is changed once for all of
    // them.
    void Return(void* piece, std::size_t distance) noexcept {
        auto* slab = reinterpret_cast<Slab*>(static_cast<unsigned char*>(piece) - distance * kUnit);
        if (slab != m_slab) {
            Flush();
            m_slab = slab;
        }
        ++m_count;
    }

    void ReturnChildren(CAsn1Block& block) noexcept {
        CAsn1Block::Children* list = std::exchange(block.m_children, nullptr);
        block.m_childCount = 0;
        if (list != nullptr && list->slabDistance != 0) {
            Return(list, list->slabDistance);
        } else {
            ::operator delete(list);
        }
    }

    void ReturnBlock(CAsn1Block* block) noexcept {
        if (block->m_children != nullptr) {
            ReturnChildren(*block);
        }
        if (block->m_slabDistance != 0) {
            Return(block, block->m_slabDistance);
        } else {
            ::operator delete(block);
        }
    }

    // The last piece frees the slab, whichever thread gives it back.
    static void Drop(Slab* slab, std::uint32_t count) noexcept {
        if (slab->pieces.fetch_sub(count, std::memory_order_acq_rel) == count) {
            const bool kept = slab->units == kMaxSlab / kUnit && s_store.Keep(slab);
            if (!kept) {
                ::operator delete(slab);
            }
        }
    }

  private:
    void Flush() noexcept {
        if (m_slab != nullptr) {
            Drop(m_slab, m_count);
        }
        m_slab = nullptr;
        m_count = 0;
    }

    Slab* m_slab = nullptr;
    std::uint32_t m_count = 0;
};

void CAsn1BlockPool::KeepAtMost(std::size_t octets) noexcept {
    s_store.KeepAtMost(octets / kMaxSlab);
}

CAsn1BlockPool::CAsn1BlockPool(std::size_t expected)
    : m_slabSize(std::clamp(expected / kUnit * kUnit, kMinSlab, kMaxSlab)) {
    static_assert(kMaxSlab / kUnit <= std::numeric_limits<std::uint16_t>::max());
}

void CAsn1BlockPool::ReserveOnHeap(CAsn1Block& block, std::size_t count) {
    auto* list = static_cast<CAsn1Block::Children*>(::operator new(ListSize(count)));
    list->capacity = static_cast<std::uint32_t>(count);
    list->slabDistance = 0;
    block.m_children = list;
}

void CAsn1BlockPool::Destroy(std::span<CAsn1Block* const> blocks) noexcept {
    Returner returner;
    // From the last block to the first, as they lie in memory.
    for (std::size_t i = blocks.size(); i-- > 0;) {
        CAsn1Block* block = blocks[i];
        block->parent = nullptr;
        // Down along the last children, shortening each list by the child that goes. A block goes
        // with the last of its children; parents are set to the one with children left, so the way
        // up needs no stack and is short.
        while (block != nullptr) {
            CAsn1Block* up = block->parent;
            if (block->m_childCount == 0) {
                returner.ReturnBlock(block);
                block = up;
                continue;
            }
            CAsn1Block* child = block->m_children->items[--block->m_childCount];
            if (child->m_children == nullptr) {
                returner.ReturnBlock(child);
                continue;
            }
            if (block->m_childCount == 0) {
                returner.ReturnBlock(block);
            } else {
                up = block;
            }
            child->parent = up;
            block = child;
        }
    }
}

void CAsn1BlockPool::FreeChildren(CAsn1Block& block) noexcept {
    Returner().ReturnChildren(block);
}

void CAsn1BlockPool::OpenSlab(std::size_t atLeast) {
    const std::size_t size = std::max(m_slabSize, kSlabHead + atLeast);
    void* memory = size == kMaxSlab ? s_store.Take() : nullptr;
    if (memory == nullptr) {
        memory = ::operator new(size);
    }
    // Only now, with the new memory there: a failure leaves the pool as it was.
    CloseSlab();
    m_slab = new (memory) Slab{kOpen, static_cast<std::uint32_t>(size / kUnit)};
    m_next = static_cast<unsigned char*>(memory) + kSlabHead;
    m_end = static_cast<unsigned char*>(memory) + size;
    m_slabSize = std::min(m_slabSize * 2, kMaxSlab);
}

void CAsn1BlockPool::CloseSlab() noexcept {
    if (m_slab != nullptr) {
        Returner::Drop(m_slab, kOpen - m_pieces);
    }
    m_slab = nullptr;
    m_next = m_end = nullptr;
    m_pieces = 0;
}

// What of a block is a matter of its storage.

CAsn1Block::~CAsn1Block() {
    DeleteInnerBlocks();
}

void CAsn1Block::operator delete(CAsn1Block* block, std::destroying_delete_t) {
    CAsn1BlockPool::Destroy({&block, 1});
}

CAsn1Block* CAsn1Block::AddInnerBlock() {
    auto block = std::make_unique<CAsn1Block>();
    AppendInnerBlock(block.get());
    return block.release();
}

CAsn1Block* CAsn1Block::ImportInnerBlock(const CAsn1Block* source) {
    CAsn1BlockPool pool((source->m_childCount + 1) * sizeof(CAsn1Block));
    // Deliberate: offset and length form are not copied; a copy is written in the definite form.
    const auto copyOne = [&pool](const CAsn1Block& from, CAsn1Block* to) {
        CAsn1Block* copy = pool.NewBlock();
        copy->parent = to;
        copy->tag = from.tag;
        copy->start = from.start;
        copy->content = from.content;
        copy->contentLength = from.contentLength;
        copy->totalLength = from.totalLength;
        copy->excluded = from.excluded;
        copy->m_available = from.m_available;
        return copy;
    };
    struct Level {
        const CAsn1Block* source;
        CAsn1Block* copy;
    };
    std::unique_ptr<CAsn1Block> root(copyOne(*source, this));
    root->m_loose = true;
    std::vector<Level> open{{source, root.get()}};
    while (!open.empty()) {
        const Level level = open.back();
        if (level.copy->m_children == nullptr) {
            pool.ReserveChildren(*level.copy, level.source->m_childCount);
        }
        const CAsn1Block* next = level.source->GetInnerBlock(level.copy->m_childCount);
        if (next == nullptr) {
            open.pop_back();
            continue;
        }
        CAsn1Block* copy = copyOne(*next, level.copy);
        level.copy->m_children->items[level.copy->m_childCount++] = copy;
        if (next->m_childCount != 0) {
            open.push_back({next, copy});
        }
    }
    // A slab in use is not freed with its pool, which the analyzer does not see.
    return root.release();  // NOLINT(clang-analyzer-cplusplus.NewDelete)
}

void CAsn1Block::DeleteInnerBlocks() {
    CAsn1BlockPool::Destroy(GetInnerBlocks());
    CAsn1BlockPool::FreeChildren(*this);
}

void CAsn1Block::ReserveChild() {
    if (m_children != nullptr && m_childCount < m_children->capacity) {
        return;
    }
    // Owns the new list until it takes the old one's place.
    CAsn1Block grown;
    CAsn1BlockPool::ReserveOnHeap(grown, std::max(kFirstChildren, std::size_t{m_childCount} * 2));
    const auto children = GetInnerBlocks();
    std::copy(children.begin(), children.end(), grown.m_children->items);
    const std::uint32_t count = m_childCount;
    CAsn1BlockPool::FreeChildren(*this);
    m_children = std::exchange(grown.m_children, nullptr);
    m_childCount = count;
}
