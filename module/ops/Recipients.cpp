// Operations on enveloped messages.

#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "module/CryptoModule.h"
#include "module/ops/OtherObjects.h"
#include "module/ops/RefusedObjects.h"
#include "module/ops/RequestPayload.h"
#include "records/AnswerBudget.h"
#include "records/StringArray.h"
#include "records/fill/RecipientsFill.h"

#include <memory>

namespace {

struct FoundEnvelope {
    std::size_t item;
    std::span<const unsigned char> octets;
};

// The first envelope among the objects. Throws 16306 when there is none.
FoundEnvelope RequireEnvelope(const std::vector<ca::PayloadItem>& items) {
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (const auto envelope = ca::FindEnvelope(items[i].octets); !envelope.empty()) {
            return {i, envelope};
        }
    }
    throw ca::Exception(ca::kErrBadData, ca::SayRefused(items, &ca::ContentFault));
}

}  // namespace

// Answers with who can read the file data: a record each, and the ids of those that are named.
void CCryptoModule::GetRecipientsList(ca::CryptPacket& packet) {
    const ca::CAnswerBudget budget(ca::OctetsToDescribe(packet));
    const std::vector<ca::PayloadItem> items = ca::RequestPayload(packet);
    const FoundEnvelope found = RequireEnvelope(items);
    ca::Recipients recipients = ca::DescribeRecipients(found.octets);
    recipients.records.Tell(ca::SayOthers(items, [&](std::size_t item, auto element) {
        return item == found.item && ca::IsInside(found.octets, element);
    }));
    auto ids = std::make_unique<ca::StringArray>(std::move(recipients.ids));
    auto records = std::make_unique<ca::CertInfos2>(std::move(recipients.records));
    packet.Response().SetObject(records.release(), /*clear=*/true);  // the container owns them now
    packet.Response().SetObject(ids.release(), /*clear=*/false);
}
