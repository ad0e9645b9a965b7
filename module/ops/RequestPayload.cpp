#include "module/ops/RequestPayload.h"

#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "module/RecordTypes.h"

#include <string>

namespace ca {

std::vector<PayloadItem> RequestPayload(CryptPacket& packet) {
    FileData* payload = FindFileData(packet.Request());
    if (payload == nullptr) {
        throw Exception(kErrNoArgumentData, SetZORNAMessage(kMsgNoPayload));
    }
    std::vector<PayloadItem> items = DecodePayload({payload->data(), payload->size()});
    if (items.empty()) {
        throw Exception(kErrNoArgumentData,
                        SetZORNAMessage(kMsgNoObject) + std::to_wstring(payload->size()));
    }
    return items;
}

}  // namespace ca
