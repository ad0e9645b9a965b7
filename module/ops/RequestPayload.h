#pragma once

#include "module/CryptPacket.h"
#include "records/Payload.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace ca {

/// The objects in the request's file data, which they view. Throws ca::Exception 16118 when the
/// request has no file data, or none with an object in it.
std::vector<PayloadItem> RequestPayload(CryptPacket& packet);

/// The octets of the request's file data as they came; none without any.
std::optional<std::span<const unsigned char>> PayloadOctets(CryptPacket& packet);

/// Octets of what the request wants to be described, for its budget (CAnswerBudget).
std::size_t OctetsToDescribe(CryptPacket& packet);

}  // namespace ca
