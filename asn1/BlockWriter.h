#pragma once

#include "asn1/Asn1Block.h"

#include <cstddef>

/// Writes blocks with their stored lengths into a range that it never leaves.
class CBlockWriter {
  public:
    CBlockWriter(unsigned char* out, std::size_t room) : m_next(out), m_end(out + room) {}

    /// One block with its subtree, without those excluded. Throws ca::Exception 0x80093103 where
    /// the range is too short, or the buffer has less of a content than its block says.
    void Write(const CAsn1Block& root);

    unsigned char* Next() const { return m_next; }

  private:
    std::size_t Room() const { return static_cast<std::size_t>(m_end - m_next); }
    void WriteHeader(const CAsn1Block& block);
    void WriteContent(const CAsn1Block& block);
    void WriteEnd(const CAsn1Block& block);
    void WriteOctets(const unsigned char* octets, std::size_t count);

    unsigned char* m_next;
    unsigned char* m_end;
};
