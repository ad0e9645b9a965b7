#pragma once

#include "asn1/Asn1Element.h"

#include <array>
#include <cstddef>

namespace ca {

/// How the octets of a character string are to be read.
enum class Charset : unsigned char { kNone, kUtf8, kOctets, kUcs2, kUcs4 };

// Universal string types by identifier octet (X.680, 8.4).
inline constexpr std::array<Charset, 0x1F> kCharsets = [] {
    std::array<Charset, 0x1F> sets{};
    for (const int tag : {0x12, 0x13, 0x14, 0x16, 0x19, 0x1A, 0x1B}) {
        sets[static_cast<std::size_t>(tag)] = Charset::kOctets;
    }
    sets[0x0C] = Charset::kUtf8;
    sets[0x1C] = Charset::kUcs4;
    sets[0x1E] = Charset::kUcs2;
    return sets;
}();

/// kNone for what is not a character string.
inline Charset CharsetOf(const CAsn1Element& element) noexcept {
    return element.tag < kCharsets.size() ? kCharsets[element.tag] : Charset::kNone;
}

/// True when the element is of one of the character string types of X.680.
inline bool IsText(const CAsn1Element& element) noexcept {
    return CharsetOf(element) != Charset::kNone;
}

}  // namespace ca
