#pragma once

#include "common/CurlLibrary.h"
#include "common/HeapPtr.h"

#include <cstddef>

namespace ca {

/// A body as it arrives. Growing by realloc moves pages of a large block instead of copying them,
/// so the only copy is the one out of the library's buffer.
class HttpBody {
  public:
    /// \param limit  octets that are accepted.
    /// \param keep   false: they are only counted.
    HttpBody(std::size_t limit, bool keep) : m_limit(limit), m_keep(keep) {}

    /// False when the limit is reached. Throws std::bad_alloc.
    /// \param announced  octets of the whole body as the server says; not trusted.
    bool Append(const char* data, std::size_t size, curl_off_t announced);
    /// Empties it, for the answer that counts.
    void Clear() { m_size = 0; }

    std::size_t Size() const { return m_size; }
    /// Never null.
    BytePtr Take() { return m_block ? std::move(m_block) : BytePtr::Make(0); }

  private:
    void Reserve(std::size_t needed, curl_off_t announced);

    BytePtr m_block;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
    std::size_t m_limit;
    bool m_keep;
};

}  // namespace ca
