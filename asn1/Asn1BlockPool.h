#pragma once

#include "asn1/Asn1Block.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

/// Memory for the blocks of one tree, handed out piece by piece from slabs. A slab counts its
/// pieces and goes with the last of them, so blocks outlive the pool and may end on any thread.
/// The pool itself belongs to one thread. Slabs of the largest size are kept for the next tree, up
/// to kKeptOctets in the process: memory that the system has just handed out costs more than
/// filling it. asn1_bench's ParseKept and ParseUnkept show what that brings: trees of a slab or more
/// take half the time, and no more than this brings the same.
class CAsn1BlockPool {
  public:
    static constexpr std::size_t kKeptOctets = std::size_t{8} << 20;

    /// \param expected  octets the tree will probably take; the first slab is made to measure.
    explicit CAsn1BlockPool(std::size_t expected);
    CAsn1BlockPool(const CAsn1BlockPool&) = delete;
    CAsn1BlockPool& operator=(const CAsn1BlockPool&) = delete;
    ~CAsn1BlockPool() { CloseSlab(); }

    /// A block with all fields zero; `delete` returns it. Throws std::bad_alloc.
    CAsn1Block* NewBlock();

    /// Gives a block without children room for `count` of them. Throws std::bad_alloc.
    void ReserveChildren(CAsn1Block& block, std::size_t count);
    static void ReserveOnHeap(CAsn1Block& block, std::size_t count);

    /// Gives a block without children these. Throws std::bad_alloc, leaving all as it was.
    void SetChildren(CAsn1Block& block, std::span<CAsn1Block* const> children);

    /// Sets what is kept in the process between trees; frees at once what is more. kKeptOctets until
    /// then, nothing under the address sanitizer. Any thread.
    static void KeepAtMost(std::size_t octets) noexcept;

    /// Destroys blocks with their subtrees; needs no memory.
    static void Destroy(std::span<CAsn1Block* const> blocks) noexcept;
    /// Returns the storage of a block's list of children.
    static void FreeChildren(CAsn1Block& block) noexcept;

  private:
    friend class CAsn1Block;

    struct Slab {
        std::atomic<std::uint32_t> pieces;
        std::uint32_t units;  // its size
    };
    // The slabs that wait for the next tree.
    class Store;
    static Store s_store;
    // Returns pieces to their slabs, those in a row with one atomic step.
    class Returner;

    // Distances are counted in these units, so that 16 bits reach over a whole slab.
    static constexpr std::size_t kUnit = 8;
    static constexpr std::size_t kMaxPooledList = 4096;  // longer lists of children go to the heap

    static std::size_t ListSize(std::size_t count) {
        // NOLINTNEXTLINE(bugprone-sizeof-expression): a list of pointers
        return offsetof(CAsn1Block::Children, items) + count * sizeof(CAsn1Block*);
    }
    void* Carve(std::size_t size) {
        if (static_cast<std::size_t>(m_end - m_next) < size) {
            OpenSlab(size);
        }
        ++m_pieces;
        return std::exchange(m_next, m_next + size);
    }
    std::uint16_t DistanceOf(const void* piece) const {
        const auto distance = static_cast<const unsigned char*>(piece) -
                              reinterpret_cast<const unsigned char*>(m_slab);
        return static_cast<std::uint16_t>(static_cast<std::size_t>(distance) / kUnit);
    }
    void OpenSlab(std::size_t atLeast);
    void CloseSlab() noexcept;

    Slab* m_slab = nullptr;
    unsigned char* m_next = nullptr;
    unsigned char* m_end = nullptr;
    std::uint32_t m_pieces = 0;
    std::size_t m_slabSize;
};

inline void* CAsn1Block::operator new(std::size_t size, CAsn1BlockPool& pool) {
    return pool.Carve(size);
}

inline CAsn1Block* CAsn1BlockPool::NewBlock() {
    auto* block = new (*this) CAsn1Block;
    block->m_slabDistance = DistanceOf(block);
    return block;
}

inline void CAsn1BlockPool::ReserveChildren(CAsn1Block& block, std::size_t count) {
    const std::size_t size = ListSize(count);
    if (size > kMaxPooledList) {
        ReserveOnHeap(block, count);
        return;
    }
    auto* list = static_cast<CAsn1Block::Children*>(Carve(size));
    list->capacity = static_cast<std::uint32_t>(count);
    list->slabDistance = DistanceOf(list);
    block.m_children = list;
}

inline void CAsn1BlockPool::SetChildren(CAsn1Block& block, std::span<CAsn1Block* const> children) {
    ReserveChildren(block, children.size());
    CAsn1Block** item = block.m_children->items;
    for (CAsn1Block* child : children) {  // mostly a few
        *item++ = child;
    }
    block.m_childCount = static_cast<std::uint32_t>(children.size());
}
