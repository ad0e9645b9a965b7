#pragma once

#include "records/Payload.h"

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace ca {

/// Objects beside the described ones that are told of; the others are counted.
inline constexpr std::size_t kMaxOthersSaid = 10;

/// Whether an operation describes an element of its payload.
using IsDescribed = std::function<bool(std::size_t item, std::span<const unsigned char> element)>;

/// Whether `part` stands in `whole`, by its place in memory.
inline bool IsInside(std::span<const unsigned char> part, std::span<const unsigned char> whole) {
    return part.data() >= whole.data() && part.data() < whole.data() + whole.size();
}

/// Says what a payload holds beside what an operation describes, for "Error", a line each:
/// `Not described: object 2 "X509 CRL": certificate revocation list`, damaged PEM blocks and octets
/// after an object too; "" when all is described. Cost is linear.
/// \param items  as DecodePayload() found them.
/// \param inMessages  what stands among the certificates of a signed message, and its lists, too.
std::wstring SayOthers(const std::vector<PayloadItem>& items, const IsDescribed& isDescribed,
                       bool inMessages = false);

}  // namespace ca
