#pragma once

#include "common/HeapPtr.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace ca {

/// One object found in what a client handed in: BER octets, wherever they came from.
struct PayloadItem {
    std::string label;                ///< of its PEM block ("CERTIFICATE"); "" for other forms
    std::string headers;              ///< of its PEM block (RFC 1421, 4.6), lines; mostly ""
    std::span<unsigned char> octets;  ///< a view of the client's data or of `decoded`
    BytePtr decoded;
};

/// Finds the objects in a payload: PEM blocks (any label, text around and headers inside them, a
/// missing end line), the Base64 bodies of a MIME message, bare Base64 with any white space, or the
/// octets as they are. A PEM block that does not decode becomes an item without octets, so that
/// indices still count the blocks.
/// \param data  outlives the items, which may view it.
/// \return empty for no octets, or for a text that holds no object.
/// Cost is linear. Throws only std::bad_alloc.
std::vector<PayloadItem> DecodePayload(std::span<unsigned char> data);

/// Octets of memory that the items take.
std::size_t OctetsHeld(const std::vector<PayloadItem>& items);

}  // namespace ca
