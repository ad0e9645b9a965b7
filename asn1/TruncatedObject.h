#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

// Objects whose octets end too early: a file that was not wholly copied.

/// The beginning of a cut object.
struct CAsn1Beginning {
    std::vector<unsigned char> octets;
    std::size_t end = 0;  ///< after what was kept; ends of indefinite lengths may follow
};

/// Makes what is there of a cut object one that can be read: a copy in which the elements that are
/// open at the end stop there. An element that is cut in its value is left out, so that no part of
/// a value passes for all of it; an OCTET STRING stays when an encoding begins in it, which its
/// reader is to mend in turn. Places in the copy are those of the octets.
/// \return nothing when the octets begin with a whole element or with none.
/// Cost is linear. Elements open more than 64 deep are left out.
std::optional<CAsn1Beginning> MendTruncated(std::span<const unsigned char> octets);
