#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// The identifier and length octets at the front of an element (ITU-T X.690, 8.1.2 and 8.1.3), as
/// they stand there. It views the octets. What a reader makes of them is its own: which tags it
/// takes, how many length octets, and whether the content has to be there.
class CBerHeader {
  public:
    /// False when `octets` end inside the header. With two octets or more its tag, form and size
    /// are known all the same, its length is not.
    bool Read(std::span<const unsigned char> octets) noexcept {
        m_start = octets.data();
        m_size = kShortest;
        if (octets.size() < kShortest) {
            return false;
        }
        if (m_start[1] > kIndefinite) {
            m_size += m_start[1] & kCountBits;
        }
        return m_size <= octets.size();
    }

    unsigned char Tag() const { return m_start[0]; }
    bool IsConstructed() const { return (m_start[0] & kConstructed) != 0; }
    /// The one length octet is the length.
    bool IsShort() const { return m_start[1] < kIndefinite; }
    bool IsIndefinite() const { return m_start[1] == kIndefinite; }
    /// The first length octet is 0xFF, which no encoding has (X.690, 8.1.3.5 c).
    bool IsReserved() const { return m_start[1] == 0xFF; }
    /// Octets of identifier and length.
    std::size_t Size() const { return m_size; }
    /// The octets of a length in the long form, most significant first; none in the other forms.
    std::span<const unsigned char> LengthOctets() const {
        return {m_start + kShortest, m_size - kShortest};
    }

    /// Content octets that it announces; 0 in the indefinite form. UINT64_MAX where 64 bits do not
    /// hold them.
    std::uint64_t Length() const noexcept {
        if (m_size == kShortest) {
            return IsIndefinite() ? 0 : m_start[1];
        }
        std::uint64_t length = 0;
        for (const unsigned char octet : LengthOctets()) {
            if (length >> 56U != 0) {
                return UINT64_MAX;
            }
            length = length << 8U | octet;
        }
        return length;
    }

    static constexpr std::size_t kShortest = 2;
    static constexpr unsigned char kIndefinite = 0x80;

  private:
    static constexpr unsigned char kConstructed = 0x20;
    static constexpr unsigned char kCountBits = 0x7F;

    const unsigned char* m_start = nullptr;
    std::size_t m_size = 0;
};
