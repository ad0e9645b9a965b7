#pragma once

#include "asn1/Asn1Element.h"

#include <cstddef>
#include <optional>
#include <span>

namespace ca {

/// The first place where octets stop being BER elements.
struct Asn1Damage {
    Asn1Fault fault = Asn1Fault::kNone;
    std::size_t offset = 0;  ///< of the element that cannot be read; the end where one is missing
    unsigned char tag = 0;   ///< its identifier octet; 0 at the end of the octets
    std::size_t announced = 0;  ///< content octets, of an element longer than what holds it
    std::size_t available = 0;  ///< those that are there
};

/// Looks for damage to any depth, in front of octets of strings; none for one or more whole
/// elements, and for no octets. No log lines, no recursion. Time is linear, memory grows with the
/// depth only.
std::optional<Asn1Damage> FindAsn1Damage(std::span<const unsigned char> octets);

/// True when the octets are exactly one or more whole BER elements, to any depth.
inline bool IsWellFormed(std::span<const unsigned char> octets) {
    return !octets.empty() && !FindAsn1Damage(octets);
}

}  // namespace ca
