#pragma once

#include "common/HeapPtr.h"
#include "common/Json.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <span>
#include <string>
#include <vector>

// BER/DER as ITU-T X.690 has it, cut into a tree of tag-length-value nodes over the caller's
// buffer. Lengths and offsets are octets. Nothing here recurses on the depth of a tree.

class CAsn1BlockPool;

/// One tag-length-value node. Owns its children; views the buffer it was parsed from.
/// A tree may be read from several threads; changing it needs the caller's lock.
class CAsn1Block {
  public:
    const unsigned char* start = nullptr;  ///< First identifier octet; null for a block not parsed.
    const unsigned char* content = nullptr;  ///< First content octet, in the caller's buffer.
    CAsn1Block* parent = nullptr;            ///< Null for a root.
    std::uint32_t contentLength = 0;         ///< Without the end-of-contents pair.
    std::uint32_t totalLength = 0;           ///< Identifier, length and content; 0 until known.
    std::uint32_t offset = 0;                ///< Of the identifier in the parsed buffer.
    /// The one identifier octet. Deliberate: the high-tag-number form is not recognised; its
    /// further octets are read as the length.
    std::uint8_t tag = 0;
    bool isUnknownLength : 1 = false;  ///< The length octet is 0x80 (indefinite form).
    bool excluded : 1 = false;         ///< Taken out: left out of lengths and of what is written.
    bool corrupted : 1 = false;        ///< Its parse did not end.

  private:
    // Here, where they take no room of their own: a tree has millions of blocks.
    bool m_loose : 1 = false;          // has a parent but is not among its children
    std::uint16_t m_slabDistance = 0;  // as Children::slabDistance

  public:
    CAsn1Block() = default;
    CAsn1Block(const CAsn1Block&) = delete;
    CAsn1Block& operator=(const CAsn1Block&) = delete;
    ~CAsn1Block();

    // Blocks of one parse share slabs of memory; others are on the heap. `delete` knows which.
    static void* operator new(std::size_t size) { return ::operator new(size); }
    static void* operator new(std::size_t size, CAsn1BlockPool& pool);
    static void operator delete(CAsn1Block* block, std::destroying_delete_t);

    bool IsConstructed() const { return (tag & 0x20U) != 0; }
    // Deliberate: each test looks at one bit, so a private tag (0xC0) is of both classes, and an
    // index keeps the other class's bit.
    bool IsContextSpecific() const { return (tag & 0x80U) != 0; }
    bool IsApplicationSpecific() const { return (tag & 0x40U) != 0; }
    unsigned GetContextSpecificIndex() const { return tag & 0x5FU; }
    unsigned GetApplicationSpecificIndex() const { return tag & 0x9FU; }

    /// Parses one block with its subtree at data[*pos]; replaces what this block held.
    /// \param pos     position in `data`; advanced past the block.
    /// \param absoluteOffset  advanced alike, except over the header of an empty constructed block.
    ///                Deliberate: what follows such a block reports an offset 2 too low.
    /// \param size    octets of `data`, which outlives the tree.
    /// \param noThrow a truncation is logged, and the block ends where the data end.
    /// \param continueOnLengthMismatch  children longer than their parent are logged as an error
    ///                and the parent goes on; otherwise the parent ends there.
    /// Throws ca::Exception 0x80093102 at a truncation, 0x80093103 (logged) when overrunning
    /// children would make more blocks than `data` has octets, or show its octets again and again:
    /// the contents of the blocks without children come to at most 16 times `data` and 1 MiB. The
    /// blocks left open are flagged corrupted and keep a total length of 0.
    void Parse(unsigned char* data, unsigned int* pos, unsigned int* absoluteOffset,
               unsigned int size, bool noThrow, bool continueOnLengthMismatch);

    /// Octets this block takes when written; stored as totalLength.
    /// \param recompute  first sets the content length of every constructed block of the subtree
    ///                   that has children to the sum of those not excluded.
    /// Throws ca::Exception 0x80093103 when a length does not fit 32 bits.
    unsigned int GetTotalLength(bool recompute);

    /// Writes the block at out[*pos] with the stored lengths, the shortest length form, and
    /// advances *pos. `out` has room for totalLength octets there.
    /// Throws ca::Exception 0x80093103 instead of writing more than totalLength octets.
    void GetAsn1Data(unsigned char* out, unsigned int* pos) const;

    /// The octets the block was parsed from: totalLength of them, fewer where the buffer ends.
    std::span<const unsigned char> GetRawEncoding() const;
    /// Ties a block that Parse() did not make to the octets of its encoding, which outlive it.
    void SetRawEncoding(std::span<const unsigned char> encoding);
    /// The content octets as they stand in the buffer, fewer where it ends. Of a block whose
    /// content was replaced: the new content.
    std::span<const unsigned char> GetRawContent() const {
        const auto header = start != nullptr ? static_cast<std::uint32_t>(content - start) : 0;
        return {content,
                start != nullptr ? std::min(contentLength, m_available - header) : contentLength};
    }
    /// Octets from `start` to the end of the parsed buffer; 0 for a block not parsed.
    std::uint32_t GetAvailable() const { return m_available; }

    /// Appends an empty child; owned by this block.
    CAsn1Block* AddInnerBlock();
    /// Deep copy that has this block as its parent but is not yet among its children: the caller
    /// owns it until it hands it to AppendInnerBlock(). The contents stay views of the buffer.
    CAsn1Block* ImportInnerBlock(const CAsn1Block* source);
    /// Takes ownership of `block`, which leaves the children of its former parent if it was there.
    void AppendInnerBlock(CAsn1Block* block);
    /// Takes `child` out of the children; null when it is none of them.
    std::unique_ptr<CAsn1Block> TakeInnerBlock(CAsn1Block* child);
    void DeleteInnerBlocks();

    /// Child `i`, null when there is none.
    CAsn1Block* GetInnerBlock(std::size_t i) const {
        return i < m_childCount ? m_children->items[i] : nullptr;
    }
    std::size_t GetInnerBlockCount() const { return m_childCount; }
    /// The children in order of appearance; valid until they change.
    std::span<CAsn1Block* const> GetInnerBlocks() const {
        return m_childCount != 0 ? std::span<CAsn1Block* const>(m_children->items, m_childCount)
                                 : std::span<CAsn1Block* const>();
    }

    /// First child at index `from` or later with this identifier octet; null when there is none.
    CAsn1Block* GetBlockByTag(unsigned int wanted, std::size_t from) const;
    /// First child at index `from` or later that is context-specific or application-specific and
    /// has index `idx` there; null when there is none.
    CAsn1Block* GetBlockBySpecificIdx(unsigned int idx, std::size_t from) const;
    /// The block at a path of child indices ("0/2/1"; empty items skipped). Null for an empty path
    /// and for an index without a child. Throws std::invalid_argument or std::out_of_range for an
    /// item that is not an int.
    CAsn1Block* GetBlockByPath(const std::wstring& path) const;

    /// Writes the members of this block's JSON object: the key "structure" and its value. The
    /// caller has opened the object and closes it.
    /// BIT STRINGs of the tree get their unused bits cleared in the buffer.
    void ToJson(ca::JsonWriter& writer);
    /// The whole dump: an object with "structure" and, when the block has octets, "data".
    /// \return UTF-8, zero-terminated; the length without the zero in `length` when given.
    ca::BytePtr ToJson(std::size_t* length = nullptr);

  private:
    friend class CAsn1BlockPool;
    friend class CAsn1BlockReader;

    // The children's pointers with what is known about their storage.
    struct Children {
        std::uint32_t capacity;
        std::uint32_t slabDistance;  // 8-octet units back to the slab's head; 0: on the heap
        CAsn1Block* items[1];        // `capacity` of them
    };

    void ReserveChild();

    union {
        Children* m_children = nullptr;
        // While the reader has the block open: the sum of its children's content lengths, and in
        // m_childCount the place of its first child among the children that the reader holds.
        std::uint64_t m_childrenLength;
    };
    std::uint32_t m_childCount = 0;
    std::uint32_t m_available = 0;  // octets from `start` to the end of the parsed buffer
};

/// Octets that a length of 128 or more takes behind the first length octet; 0 for a shorter one.
inline unsigned int GetBytesCount(unsigned int length) {
    return length < 128 ? 0 : (static_cast<unsigned>(std::bit_width(length)) + 7) / 8;
}

/// `length` where it fits 32 bits. Throws ca::Exception 0x80093103 (logged) for a longer one.
std::uint32_t CheckedAsn1Length(std::uint64_t length);

/// The block at a path of child indices below `level`; see CAsn1Block::GetBlockByPath().
CAsn1Block* FindBlockByPath(std::span<CAsn1Block* const> level, const std::wstring& path);
