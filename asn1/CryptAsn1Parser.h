#pragma once

#include "asn1/Asn1Block.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// The roots of one buffer. The buffer outlives the parser; it is changed only by reading a
/// BIT STRING (see CAsn1BitString). One thread at a time.
class CCryptAsn1Parser {
  public:
    CCryptAsn1Parser() = default;
    CCryptAsn1Parser(const CCryptAsn1Parser&) = delete;
    CCryptAsn1Parser& operator=(const CCryptAsn1Parser&) = delete;
    ~CCryptAsn1Parser();

    /// Cuts `data` into roots; replaces the roots of an earlier call. Blocks are never more than
    /// `size`, and what they show bounded as CAsn1Block::Parse() has it; beyond that the parse ends
    /// with the error code 0x80093103, logged once.
    /// \param stopAtTruncation  true: a truncation ends the parse with the code 0x80093102; the
    ///        roots stay, the open blocks are flagged corrupted. False: it is logged, and the block
    ///        ends where the buffer ends.
    /// \param continueOnLengthMismatch  see CAsn1Block::Parse().
    /// \param singleRoot  what follows the first root is ignored, with a line in the log.
    /// Of the lines about one kind of damage the first 16 are logged.
    void Parse(unsigned char* data, unsigned int size, bool stopAtTruncation,
               bool continueOnLengthMismatch, bool singleRoot);

    /// The error that ended the last parse; 0 for none.
    std::uint32_t GetLastErrorCode() const { return m_errorCode; }

    /// Octets Build() writes: all lengths recomputed. Throws ca::Exception 0x80093103 when the sum
    /// does not fit 32 bits.
    unsigned int GetTotalLength();

    /// Writes every root to `out`, which has room for what GetTotalLength() returned last; an error
    /// code of the parse is logged first.
    /// Throws ca::Exception 0x80093103 instead of writing more than that.
    void Build(unsigned char* out);

    std::size_t GetRootCount() const { return m_roots.size(); }
    /// Root `i`, null when there is none.
    CAsn1Block* GetRoot(std::size_t i) const { return i < m_roots.size() ? m_roots[i] : nullptr; }
    std::span<CAsn1Block* const> GetRoots() const { return m_roots; }
    /// As CAsn1Block::GetBlockByPath(); the first index selects the root.
    CAsn1Block* GetBlockByPath(const std::wstring& path) const;

    /// The JSON dump of the first root, zero-terminated UTF-8; null when there is no root.
    ca::BytePtr GetAsn1Structure(std::size_t* length = nullptr) const;
    /// Parses what `data` holds up to a truncation and dumps the first root.
    ca::BytePtr GetAsn1Structure(unsigned char* data, unsigned int size,
                                 std::size_t* length = nullptr);

  private:
    void DeleteRoots() noexcept;

    std::vector<CAsn1Block*> m_roots;
    std::uint32_t m_totalLength = 0;
    std::uint32_t m_errorCode = 0;
};
