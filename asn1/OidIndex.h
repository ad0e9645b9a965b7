#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace ca {

/// An open-addressing index into the rows of the table of object identifiers, made by the compiler.
class COidIndex {
  public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    /// \param keyOf  gives the key of row i: octets or characters.
    template <class KeyOf>
    constexpr COidIndex(std::size_t rows, KeyOf keyOf) {
        std::ranges::fill(m_slots, kFree);
        for (std::size_t i = 0; i < rows; ++i) {
            std::size_t slot = Hash(keyOf(i)) % kSlots;
            std::size_t probes = 1;
            for (; m_slots[slot] != kFree; ++probes) {
                slot = (slot + 1) % kSlots;
            }
            m_slots[slot] = static_cast<std::uint16_t>(i);
            m_longestProbe = std::max(m_longestProbe, probes);
        }
    }

    /// The row with this key; kNone when there is none.
    template <class Key, class KeyOf>
    constexpr std::size_t Find(const Key& key, KeyOf keyOf) const {
        for (std::size_t slot = Hash(key) % kSlots; m_slots[slot] != kFree;
             slot = (slot + 1) % kSlots) {
            const std::size_t row = m_slots[slot];
            if (std::ranges::equal(keyOf(row), key)) {
                return row;
            }
        }
        return kNone;
    }

    /// Keys from outside must not make a look-up slow.
    constexpr bool IsEven() const { return m_longestProbe <= 8; }

  private:
    static constexpr std::size_t kSlots = 4096;
    static constexpr std::uint16_t kFree = 0xFFFF;

    // FNV-1a.
    template <class Units>
    static constexpr std::uint32_t Hash(const Units& units) {
        std::uint32_t hash = 2166136261U;
        for (const auto unit : units) {
            hash = (hash ^ static_cast<unsigned char>(unit)) * 16777619U;
        }
        return hash ^ (hash >> 15U);
    }

    std::uint16_t m_slots[kSlots] = {};  // rows
    std::size_t m_longestProbe = 0;
};

}  // namespace ca
