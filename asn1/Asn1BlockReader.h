#pragma once

#include "asn1/Asn1Block.h"
#include "asn1/Asn1BlockPool.h"
#include "asn1/BerHeader.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// Cuts one buffer into blocks. The blocks whose children are being read stay linked by their
/// parents and hold what the reader knows of them, so that depth needs no stack.
///
/// Overrunning children let a position go back, so the same octets can be cut again and again. The
/// blocks of one reader are therefore never more than the octets of the buffer, and the contents of
/// those without children, which is what is written of a tree, at most kContentPerOctet times them
/// and kContentAlways.
class CAsn1BlockReader {
  public:
    /// The meaning of the flags is that of CAsn1Block::Parse().
    CAsn1BlockReader(const unsigned char* data, std::uint32_t position, std::uint32_t size,
                     bool noThrow, bool continueOnLengthMismatch);

    static constexpr std::int64_t kContentPerOctet = 16;
    static constexpr std::int64_t kContentAlways = 1 << 20;

    /// An empty block for Read(), owned by the caller. Throws ca::Exception 0x80093103 (logged)
    /// when there are as many blocks as may be.
    CAsn1Block* NewRoot();

    /// Reads one block and its subtree at the current position into `root`, which is empty.
    /// Throws as CAsn1Block::Parse() does; what was read up to there hangs below `root`. The
    /// content that is one too many is left out of its block.
    void Read(CAsn1Block& root);

    std::uint32_t GetPosition() const { return m_position; }
    std::uint32_t GetOffset() const { return m_offset; }
    void SetOffset(std::uint32_t offset) { m_offset = offset; }
    /// True while every length read so far is what CAsn1Block::GetTotalLength(true) would compute.
    bool AreLengthsFinal() const { return m_lengthsFinal; }

  private:
    enum class Damage { kTruncation, kOverrun, kOverrunError };

    std::uint32_t Remaining() const { return m_size - m_position; }
    std::uint32_t PositionOf(const unsigned char* octet) const {
        return static_cast<std::uint32_t>(octet - m_data);
    }

    void CountBlock();
    void CountContent(CAsn1Block& block);
    std::wstring Place() const;
    void ThrowTooMuch() const;
    CAsn1Block* NewChild();
    void ReadBelow(CAsn1Block& root);
    bool ReadHeader(CAsn1Block& block);
    bool ReadLongLength(CAsn1Block& block);
    void ReadPrimitive(CAsn1Block& block);
    void ReadIndefinitePrimitive(CAsn1Block& block);
    void EndAtBuffer(CAsn1Block& block);
    void Open(CAsn1Block& block);
    bool IsLastChild(const CAsn1Block& child);
    bool IsOverrunEnd(const CAsn1Block& block);
    const CAsn1Block* Close();
    void Hang(std::span<CAsn1Block* const> children);
    void Unwind() noexcept;
    std::uint32_t FindZeroPair(std::uint32_t from) const;
    void Truncated();
    bool MayLog(Damage damage);

    const unsigned char* m_data;
    std::uint32_t m_position;
    std::uint32_t m_size;
    std::uint32_t m_offset = 0;
    std::uint32_t m_blocksLeft;
    std::int64_t m_contentLeft;  // below 0: too much
    bool m_noThrow;
    bool m_continueOnLengthMismatch;
    bool m_lengthsFinal = true;
    CAsn1Block* m_root = nullptr;  // of the current Read()
    CAsn1Block* m_open = nullptr;  // the innermost open block; its parents are open up to m_root
    std::vector<CAsn1Block*> m_children;  // of the open blocks, outermost first
    std::array<unsigned, 3> m_logged{};
    CAsn1BlockPool m_pool;
};
