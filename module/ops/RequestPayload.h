#pragma once

#include "module/CryptPacket.h"
#include "records/Payload.h"

#include <vector>

namespace ca {

/// The objects in the request's file data, which they view. Throws ca::Exception 16118 when the
/// request has no file data, or none with an object in it.
std::vector<PayloadItem> RequestPayload(CryptPacket& packet);

}  // namespace ca
