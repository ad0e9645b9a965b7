#include "module/ops/RequestPayload.h"

#include "common/DecimalText.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "module/RecordTypes.h"
#include "records/AnswerBudget.h"

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
                        SetZORNAMessage(kMsgNoObject) + ca::DecimalText(payload->size()));
    }
    // What decoding has made stays until the answer is written.
    CAnswerBudget::Take(OctetsHeld(items));
    return items;
}

std::optional<std::span<const unsigned char>> PayloadOctets(CryptPacket& packet) {
    const FileData* payload = FindFileData(packet.Request());
    return payload != nullptr ? std::optional(payload->Octets()) : std::nullopt;
}

// All that a request brings: an answer's size is measured by it.
std::size_t OctetsToDescribe(CryptPacket& packet) {
    const FileData* payload = FindFileData(packet.Request());
    std::size_t octets = packet.request.sendSignData.size();
    octets += payload != nullptr ? payload->size() : 0;
    for (const Blob& signature : packet.request.signatures) {
        octets += signature.size();
    }
    return octets;
}

}  // namespace ca
