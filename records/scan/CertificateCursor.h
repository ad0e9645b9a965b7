#pragma once

#include "asn1/Asn1Element.h"

#include <cstddef>
#include <span>

namespace ca {

/// Walks certificates that stand one after the other, among whatever else. An element that cannot
/// be read (CAsn1Cursor) does not hide those after it: the walk goes on where the next certificate
/// begins. Cost is linear: what is looked at more than once is bounded by a multiple of the octets.
class CCertificateCursor {
  public:
    explicit CCertificateCursor(std::span<const unsigned char> octets);

    /// Steps to the next element, a certificate or not; false at the end.
    bool Next(CAsn1Element& element);
    /// What was not walked yet.
    const CAsn1Cursor& Rest() const { return m_cursor; }
    /// The first octets that could not be read; empty when all could.
    std::span<const unsigned char> Unread() const { return m_unread; }

  private:
    CAsn1Cursor m_cursor;
    std::span<const unsigned char> m_unread;
    std::size_t m_work;  // octets that may still be looked at for a beginning
};

}  // namespace ca
