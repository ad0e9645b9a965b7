// Operations that read the signed messages a client hands in. Nothing is verified here, and every
// record says so until a provider puts its verdict there.

#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "common/Log.h"
#include "module/CryptoModule.h"
#include "module/Provider.h"
#include "module/ProviderCall.h"
#include "module/RecordTypes.h"
#include "module/ops/OtherObjects.h"
#include "module/ops/RefusedObjects.h"
#include "module/ops/RequestPayload.h"
#include "records/AnswerBudget.h"
#include "records/fill/SignInfoFill.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace {

// Gives what judges the signatures of an object; may give none.
using Judges =
    std::function<std::unique_ptr<ca::ISignatureJudge>(std::span<const unsigned char> object)>;

// Appends the signatures of all messages among the objects; true when each of them encloses its
// content. How many objects there was no room for is said with the first.
bool Describe(const std::vector<ca::PayloadItem>& items, ca::SignInfos& signatures,
              const Judges& judges = {}) {
    bool isAttached = true;
    std::vector<bool> isMessage(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (!ca::CAnswerBudget::HasRoomFor(0)) {
            signatures.SayMore(items.size() - i);
            std::fill(isMessage.begin() + static_cast<std::ptrdiff_t>(i), isMessage.end(), true);
            break;
        }
        // A verdict is asked for messages alone; other objects have nothing to judge.
        const bool isJudged = judges && !ca::FindSignedData(items[i].octets).empty();
        const auto judge = isJudged ? judges(items[i].octets) : nullptr;
        const std::optional<bool> encloses =
            ca::FillSignInfos(items[i].octets, signatures, judge.get());
        isMessage[i] = encloses.has_value();
        isAttached = encloses.value_or(true) && isAttached;
    }
    signatures.Tell(ca::SayOthers(items, [&](std::size_t item, auto element) {
        return isMessage[item] && ca::IsInside(items[item].octets, element);
    }));
    return isAttached;
}

std::vector<ca::PayloadItem> Decode(ca::Blob& blob) {
    std::vector<ca::PayloadItem> items = ca::DecodePayload({blob.data(), blob.size()});
    ca::CAnswerBudget::Take(ca::OctetsHeld(items));
    return items;
}

// The signature that stands apart from the file data, or the file data. Throws 16118 for neither.
std::vector<ca::PayloadItem> SignaturePayload(ca::CryptPacket& packet) {
    std::vector<ca::PayloadItem> items = Decode(packet.request.sendSignData);
    // "sendSignData" holds a signature whose content is the file data.
    return items.empty() ? ca::RequestPayload(packet) : std::move(items);
}

// The objects that a refusal of GetSignInfo2 tells of: those of the first messages.
std::vector<ca::PayloadItem> RefusedItems(ca::CryptPacket& packet) {
    if (packet.request.signatures.empty()) {
        return SignaturePayload(packet);
    }
    std::vector<ca::PayloadItem> items;
    for (ca::Blob& message : packet.request.signatures) {
        if (items.size() >= ca::kMaxRefusedSaid) {
            break;
        }
        std::ranges::move(Decode(message), std::back_inserter(items));
    }
    return items;
}

// The list of signatures; sets whether the content is enclosed. A message that nobody signed must
// not read as a signed one: 16308, as for no message.
std::unique_ptr<ca::SignInfos> DescribeAll(ca::CryptPacket& packet, const Judges& judges = {}) {
    const std::vector<ca::PayloadItem> items = SignaturePayload(packet);
    auto signatures = std::make_unique<ca::SignInfos>();
    const bool isAttached = Describe(items, *signatures, judges);
    if (signatures->Count() == 0) {
        throw ca::Exception(ca::kErrNoSignedData, ca::SayRefused(items, &ca::SignedMessageFault));
    }
    packet.response.isAttached = isAttached;
    return signatures;
}

}  // namespace

// Describes the signatures of a message, the signer's certificates and attributes with them.
void CCryptoModule::GetSignInfo(ca::CryptPacket& packet) {
    const ca::CAnswerBudget budget(ca::OctetsToDescribe(packet));
    auto signatures = DescribeAll(packet);
    packet.Response().SetObject(signatures.release(), /*clear=*/true);  // the container owns it now
    LogEvent(SetZORNAMessage(kMsgSignInfoReturned), /*isError=*/false);
}

// The same list, for hosts that ask for the flag beside it.
void CCryptoModule::GetSignType(ca::CryptPacket& packet) {
    GetSignInfo(packet);
}

// Describes the signatures with the provider's verdicts. The file data beside "sendSignData" is
// what a signature that stands apart signs.
void CCryptoModule::Verify(ca::CryptPacket& packet) {
    const ca::CAnswerBudget budget(ca::OctetsToDescribe(packet));
    const auto content =
        packet.request.sendSignData.empty() ? std::nullopt : ca::PayloadOctets(packet);
    auto extracted = packet.request.needExtraction ? std::make_unique<ca::FileData>() : nullptr;
    ca::CProviderCall call(packet, *this);
    auto signatures = DescribeAll(packet, [&](std::span<const unsigned char> message) {
        return m_provider->Verify(call, {message, content, extracted.get()});
    });
    LogEvent(signatures->items.front()->verifyResult.c_str(), /*isError=*/false);
    packet.Response().SetObject(signatures.release(), /*clear=*/true);  // the container owns it now
    if (extracted != nullptr && extracted->data() != nullptr) {
        packet.Response().SetObject(extracted.release(), /*clear=*/false);
    }
}

// Describes several messages, a list each: those of "signatures", or else the file data. One that
// is not signed has an empty list.
void CCryptoModule::GetSignInfo2(ca::CryptPacket& packet) {
    const ca::CAnswerBudget budget(ca::OctetsToDescribe(packet));
    auto lists = std::make_unique<ca::SignInfosArray>();
    const auto add = [&](const auto& decode) {
        ca::SignInfos list;
        {
            const ca::CBudgetLoan loan(lists->items.empty() ? 1
                                                            : 2);  // and a copy while it is added
            Describe(decode(), list);
        }
        lists->Add(std::move(list));
    };
    std::vector<ca::Blob>& messages = packet.request.signatures;
    for (ca::Blob& message : messages) {
        if (!ca::CAnswerBudget::HasRoomFor(message.size())) {
            lists->SayMore(messages.size() - lists->Count());
            break;
        }
        add([&] { return Decode(message); });
    }
    if (messages.empty()) {
        add([&] { return SignaturePayload(packet); });
    }
    // Not one of the messages was signed.
    if (lists->items.empty()) {
        throw ca::Exception(ca::kErrNoSignedData,
                            ca::SayRefused(RefusedItems(packet), &ca::SignedMessageFault));
    }
    packet.Response().SetObject(lists.release(), /*clear=*/true);  // the container owns it now
    LogEvent(SetZORNAMessage(kMsgSignInfoReturned), /*isError=*/false);
}
