// Operations that read the revocation lists a client hands in.

#include "asn1/Elements.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "common/Log.h"
#include "module/CallContext.h"
#include "module/CryptoModule.h"
#include "module/Provider.h"
#include "module/ProviderCall.h"
#include "module/ops/OtherObjects.h"
#include "module/ops/RefusedObjects.h"
#include "module/ops/RequestPayload.h"
#include "records/AnswerBudget.h"
#include "records/fill/CrlInfoFill.h"
#include "records/text/ExtensionText.h"

#include <memory>

namespace {

struct FoundCrl {
    std::size_t item;
    std::span<const unsigned char> octets;
};

// The first list among the objects. Throws 16306 when there is none.
FoundCrl RequireCrl(const std::vector<ca::PayloadItem>& items) {
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (const auto list = ca::FindCrl(items[i].octets); !list.empty()) {
            return {i, ca::FirstElement(list).raw};
        }
    }
    throw ca::Exception(ca::kErrBadData, ca::SayRefused(items, &ca::CrlFault));
}

}  // namespace

// Describes the revocation list of the file data. The call's parameters name the entries to be
// described: CRL_FIRST and CRL_COUNT a page, CRL_SERIAL those of one serial number.
void CCryptoModule::GetCRL(ca::CryptPacket& packet) {
    const ca::CAnswerBudget budget(ca::OctetsToDescribe(packet));
    const std::vector<ca::PayloadItem> items = ca::RequestPayload(packet);
    const FoundCrl found = RequireCrl(items);
    const ca::CrlPage page = ca::ReadCrlPage(packet.context->RequestParams());
    auto info = std::make_unique<ca::CrlInfo>();
    ca::FillCrlInfo(found.octets, page, *info);
    ca::AddError(info->error, ca::SayOthers(items, [&](std::size_t item, auto element) {
                     return item == found.item && ca::IsInside(found.octets, element);
                 }));
    packet.Response().SetObject(info.release(), /*clear=*/true);  // the container owns it now
    LogEvent(SetZORNAMessage(kMsgCrlInfoReturned), /*isError=*/false);
}

void CCryptoModule::TranslateCRL2(ca::CryptPacket& packet) {
    ca::CProviderCall call(packet, *this);
    m_provider->TranslateCRL2(call);
}
