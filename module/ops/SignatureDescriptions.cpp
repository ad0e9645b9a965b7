// Operations that read the signed messages a client hands in. Nothing is verified, and every record
// says so.

#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "common/Log.h"
#include "module/CryptoModule.h"
#include "module/ops/RefusedObjects.h"
#include "module/ops/RequestPayload.h"
#include "records/SignInfoFill.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

namespace {

// Appends the signatures of all messages among the objects; true when each of them encloses its
// content.
bool Describe(const std::vector<ca::PayloadItem>& items, ca::SignInfos& signatures) {
    bool isAttached = true;
    for (const ca::PayloadItem& item : items) {
        isAttached = ca::FillSignInfos(item.octets, signatures).value_or(true) && isAttached;
    }
    return isAttached;
}

std::vector<ca::PayloadItem> Decode(ca::Blob& blob) {
    return ca::DecodePayload({blob.data(), blob.size()});
}

// The signature that stands apart from the file data, or the file data. Throws 16118 for neither.
std::vector<ca::PayloadItem> SignaturePayload(ca::CryptPacket& packet) {
    std::vector<ca::PayloadItem> items = Decode(packet.request.sendSignData);
    return items.empty() ? ca::RequestPayload(packet) : std::move(items);
}

// The objects of all messages that GetSignInfo2 describes.
std::vector<ca::PayloadItem> AllItems(ca::CryptPacket& packet) {
    std::vector<ca::PayloadItem> all;
    for (ca::Blob& blob : packet.request.signatures) {
        std::ranges::move(Decode(blob), std::back_inserter(all));
    }
    return packet.request.signatures.empty() ? SignaturePayload(packet) : std::move(all);
}

// Answers with the list of signatures and, beside it, whether the content is enclosed. A message
// that nobody signed must not read as a signed one: 16308, as for no message.
void AnswerSignatures(ca::CryptPacket& packet) {
    const std::vector<ca::PayloadItem> items = SignaturePayload(packet);
    auto signatures = std::make_unique<ca::SignInfos>();
    const bool isAttached = Describe(items, *signatures);
    if (signatures->Count() == 0) {
        throw ca::Exception(ca::kErrNoSignedData, ca::SayRefused(items, &ca::SignedMessageFault));
    }
    packet.response.isAttached = isAttached;
    packet.Response().SetObject(signatures.release(), /*clear=*/true);  // the container owns it now
}

}  // namespace

// Describes the signatures of a message, the signer's certificates and attributes with them.
void CCryptoModule::GetSignInfo(ca::CryptPacket& packet) {
    AnswerSignatures(packet);
    LogEvent(SetZORNAMessage(kMsgSignInfoReturned), false);
}

// The same list, for hosts that ask for the flag beside it.
void CCryptoModule::GetSignType(ca::CryptPacket& packet) {
    GetSignInfo(packet);
}

// Describes the signatures. Placeholder: nothing is verified, and the results say so.
void CCryptoModule::Verify(ca::CryptPacket& packet) {
    AnswerSignatures(packet);
    LogEvent(SetZORNAMessage(kMsgSignatureNotVerified), false);
}

// Describes several messages, a list each: those of "signatures", or else the file data. One that
// is not signed has an empty list.
void CCryptoModule::GetSignInfo2(ca::CryptPacket& packet) {
    auto lists = std::make_unique<ca::SignInfosArray>();
    const auto add = [&](const std::vector<ca::PayloadItem>& items) {
        Describe(items, *lists->items.emplace_back(std::make_unique<ca::SignInfos>()));
    };
    for (ca::Blob& blob : packet.request.signatures) {
        add(Decode(blob));
    }
    if (lists->items.empty()) {
        add(SignaturePayload(packet));
    }
    if (std::ranges::all_of(lists->items, [](const auto& list) { return list->Count() == 0; })) {
        throw ca::Exception(ca::kErrNoSignedData,
                            ca::SayRefused(AllItems(packet), &ca::SignedMessageFault));
    }
    packet.Response().SetObject(lists.release(), /*clear=*/true);  // the container owns it now
    LogEvent(SetZORNAMessage(kMsgSignInfoReturned), false);
}
