#pragma once

#include "asn1/OidTable.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>
#include <string_view>
#include <vector>

namespace ca {

/// An object identifier that the code knows: a row of the table by its short name. A name that the
/// table does not have does not compile. It serves as octets, as text and as name alike:
///     FindOid(octets) == COid("id-data"), IsOid(octets, "id-data"), COid("id-data")->dotted
class COid {
  public:
    /// Implicit, so that tables and calls name identifiers without more words.
    consteval COid(const char* shortName) : m_row(&kOidRows[IndexOf(shortName)]) {}

    constexpr operator const OidInfo*() const noexcept { return m_row; }
    constexpr const OidInfo* operator->() const noexcept { return m_row; }
    constexpr const OidInfo& operator*() const noexcept { return *m_row; }

  private:
    static consteval std::size_t IndexOf(std::string_view shortName) {
        const std::size_t row = kOidsByShortName.Find(shortName, kOidShortNameOf);
        if (row == COidIndex::kNone) {
            throw "no such short name in common/OidTable.inc";
        }
        return row;
    }

    const OidInfo* m_row;
};

/// Whether content octets are those of an identifier.
inline bool IsOid(std::span<const unsigned char> octets, COid oid) noexcept {
    return std::ranges::equal(octets, oid->Octets());
}

/// Values by identifier, in the order of the table, so that a look-up compares no texts.
template <class Value>
class COidMap {
  public:
    COidMap() : m_values(kOidCount) {}

    Value& operator[](const OidInfo& row) { return m_values[RowOf(row)]; }
    /// A fresh value for an identifier without one and for null.
    Value Find(const OidInfo* row) const {
        return row != nullptr ? m_values[RowOf(*row)] : Value();
    }

  private:
    std::vector<Value> m_values;
};

}  // namespace ca
