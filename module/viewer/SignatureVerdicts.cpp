#include "module/viewer/SignatureVerdicts.h"

#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/HostRules.h"
#include "common/Http.h"
#include "common/Json.h"
#include "common/Lng.h"
#include "common/ProcessLanguage.h"
#include "module/CryptoModule.h"
#include "module/viewer/FileDocument.h"
#include "records/FileData.h"

#include <memory>
#include <utility>
#include <vector>

namespace {

using namespace ca;

constexpr std::int32_t kVerify = 15;
constexpr std::size_t kMaxVerified = std::size_t{8} << 20;  // octets; a window is not to wait long

// As an answer has them: records behind the first one are kept as text there.
SignInfos ReadBack(CryptPacket& packet) {
    JsonBuffer text;
    packet.response.ToJson(text);
    JsonDocument answer;
    answer.Parse<kJsonParseFlags>(text.GetString(), text.GetSize());
    SignInfos signatures;
    if (answer.IsObject() && answer.HasMember("signInfo")) {
        signatures.FromJson(answer["signInfo"]);
    }
    return signatures;
}

SignInfos Verify(std::span<const unsigned char> message) {
    CCryptoModule module(/*silent=*/true);
    if (!module.Verifies() || message.size() > kMaxVerified) {
        return {};
    }
    {
        const CKeptLanguage kept;  // the host's
        module.ReadConfig();
        module.ReadPkiConfig();
    }
    TransferSettings none;
    none.fetch.hosts = std::make_shared<const HostRules>();  // which allow nothing
    none.upload.hosts = none.fetch.hosts;
    CryptPacket packet(&none);
    packet.request.mode = kVerify;
    auto payload = std::make_unique<FileData>();
    payload->Assign(message.data(), static_cast<std::uint32_t>(message.size()));
    packet.Request().SetObject(payload.release(), /*clear=*/true);  // the container owns it now
    module.ProcessClientRequest(packet, /*interactive=*/false);
    return packet.response.errorCode == kErrNone ? ReadBack(packet) : SignInfos();
}

// Which of its kind an item is among the children of its parent.
std::size_t PlaceOf(const CFileDocument& document, ItemIndex item) {
    std::size_t place = 0;
    for (const ItemIndex each : document[document[item].parent].children) {
        if (each == item) {
            break;
        }
        place += document[each].kind == document[item].kind ? 1 : 0;
    }
    return place;
}

}  // namespace

namespace ca {

const SignInfo* CSignatureVerdicts::Of(const CFileDocument& document, std::uint32_t signature) {
    const ItemIndex message = document.MessageOf(signature);
    if (message == kNoItem) {
        return nullptr;
    }
    std::vector<std::size_t> places;  // from the signature up to the message
    for (ItemIndex at = signature; at != message; at = document[at].parent) {
        places.push_back(PlaceOf(document, at));
    }
    const auto [known, isNew] = m_messages.try_emplace(message);
    Verified& verified = known->second;
    if (isNew || verified.language != GetZORNALng()) {
        verified.language = GetZORNALng();
        try {
            verified.signatures = Verify(document[message].octets);
        } catch (const Exception&) {
            verified.signatures = {};  // what is wrong with it is told without a verdict
        }
    }
    const SignInfos* list = &verified.signatures;
    const SignInfo* record = nullptr;
    for (auto place = places.rbegin(); place != places.rend(); ++place) {
        if (*place >= list->items.size()) {
            return nullptr;
        }
        record = &*list->items[*place];
        list = &record->coSigners;
    }
    return record;
}

}  // namespace ca
