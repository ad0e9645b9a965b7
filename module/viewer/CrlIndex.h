#pragma once

#include "records/CrlInfo.h"
#include "records/fill/CrlEntries.h"
#include "records/scan/LooksLike.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace ca {

/// The entries of a revocation list by number. One walk counts them and remembers every
/// kStride-th: any entry is then found by a few steps, and nothing is kept for the others.
class CCrlIndex {
  public:
    static constexpr std::size_t kStride = 256;

    CCrlIndex() = default;
    /// \param list  what LooksLikeCrl(); outlives this.
    explicit CCrlIndex(std::span<const unsigned char> list);

    std::size_t Count() const { return m_count; }

    /// Describes entry `index`, as the records of lists do.
    /// \return what is wrong with it; "" for nothing.
    std::wstring Describe(std::size_t index, RevokedCert& record) const;

    /// The first entry of [from, to) whose serial number has these hexadecimal digits one after
    /// the other, or the last one. At most one walk.
    std::optional<std::size_t> Find(std::string_view digits, std::size_t from,
                                    std::size_t to) const;
    std::optional<std::size_t> FindLast(std::string_view digits, std::size_t from,
                                        std::size_t to) const;

  private:
    // An entry and the octets from it to the end.
    struct Place {
        std::span<const unsigned char> rest;
        CrlEntry entry;
    };

    const Place& PlaceAt(std::size_t index) const { return m_places[index / kStride]; }

    std::span<const unsigned char> m_issuer;
    std::vector<Place> m_places;
    std::size_t m_count = 0;
};

}  // namespace ca
