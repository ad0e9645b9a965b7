#pragma once

#include "asn1/CryptAsn1Parser.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>

/// Memory for the blocks of one tree, handed out piece by piece from slabs. A slab counts its
/// pieces and goes with the last of them, so blocks outlive the pool and may end on any thread.
/// The pool itself belongs to one thread. Slabs of the largest size are kept for the next tree, up
/// to kKeptOctets in the process: memory that the system has just handed out costs more than
/// filling it.
class CAsn1BlockPool {
  public:
    static constexpr std::size_t kKeptOctets = std::size_t{64} << 20;

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
    // Returns pieces to their slabs, those in a row with one atomic step.
    class Returner;

    static std::size_t ListSize(std::size_t count) {
        return offsetof(CAsn1Block::Children, items) + count * sizeof(CAsn1Block*);
    }
    void* Carve(std::size_t size);
    std::uint16_t DistanceOf(const void* piece) const;
    void OpenSlab(std::size_t atLeast);
    void CloseSlab() noexcept;

    Slab* m_slab = nullptr;
    unsigned char* m_next = nullptr;
    unsigned char* m_end = nullptr;
    std::uint32_t m_pieces = 0;
    std::size_t m_slabSize;
};
