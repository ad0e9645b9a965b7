#include "module/ops/RequestPayload.h"

#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "module/RecordTypes.h"

namespace ca {

std::vector<PayloadItem> RequestPayload(CryptPacket& packet) {
    FileData* payload = FindFileData(packet.Request());
    std::vector<PayloadItem> items;
    if (payload != nullptr) {
        items = DecodePayload({payload->data(), payload->size()});
    }
    if (items.empty()) {
        throw Exception(kErrNoArgumentData);
    }
    return items;
}

}  // namespace ca
