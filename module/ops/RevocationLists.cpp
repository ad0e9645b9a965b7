// Operations that read the revocation lists a client hands in.

#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "common/Log.h"
#include "module/CallContext.h"
#include "module/CryptoModule.h"
#include "module/ops/RefusedObjects.h"
#include "module/ops/RequestPayload.h"
#include "records/AnswerBudget.h"
#include "records/CrlInfoFill.h"

#include <memory>

namespace {

// The first list among the objects. Throws 16306 when there is none.
std::span<unsigned char> RequireCrl(const std::vector<ca::PayloadItem>& items) {
    for (const ca::PayloadItem& item : items) {
        if (const auto list = ca::FindCrl(item.octets); !list.empty()) {
            return list;
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
    const std::span<unsigned char> list = RequireCrl(items);
    const ca::CrlPage page = ca::ReadCrlPage(packet.context->RequestParams());
    auto info = std::make_unique<ca::CrlInfo>();
    ca::FillCrlInfo(list, page, *info);
    packet.Response().SetObject(info.release(), /*clear=*/true);  // the container owns it now
    LogEvent(SetZORNAMessage(kMsgCrlInfoReturned), false);
}
