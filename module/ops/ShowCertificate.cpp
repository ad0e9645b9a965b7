// Shows a certificate to the user in front of the machine.

#include "common/DecimalText.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/InitString.h"
#include "common/Lng.h"
#include "common/Log.h"
#include "module/CallContext.h"
#include "module/CryptoModule.h"
#include "module/GuiThread.h"
#include "module/Provider.h"
#include "module/ProviderCall.h"
#include "module/RecordTypes.h"
#include "module/ops/RefusedObjects.h"
#include "module/ops/RequestPayload.h"
#include "module/viewer/CertInfoDlg.h"

#include <QByteArray>

#include <functional>
#include <memory>
#include <utility>

namespace {

constexpr std::uint64_t kMaxWaitMs = 60000;

// Fills a viewer; false leaves the reason in it.
using Filler = std::function<bool(CCertInfoDlg& viewer)>;

std::uint32_t OpenViewer(const Filler& fill) {
    if (!ca::HasRoomForOwnWindow()) {
        return ca::kErrServiceMode;
    }
    std::unique_ptr<CCertInfoDlg> viewer(CCertInfoDlg::Create());
    if (viewer == nullptr) {
        return ca::kErrServiceMode;
    }
    if (!fill(*viewer)) {
        return viewer->LastErrorCode();
    }
    return ca::ShowOwnWindow(std::move(viewer)) ? ca::kErrNone : ca::kErrServiceMode;
}

// The file data's certificate, else the one that the request names. The filler holds a copy: it may
// outlive the request.
Filler FillerOf(ca::CryptPacket& packet, CCryptoModule& module, ca::IProvider& provider) {
    const ca::FileData* const payload = ca::FindFileData(packet.Request());
    if (payload == nullptr) {
        ca::CProviderCall call(packet, module);
        const std::shared_ptr<const ca::CertInfo2> info =
            provider.FindCert(call, packet.request.senderCertId);
        return [info](CCertInfoDlg& viewer) { return viewer.SetCertInfo(*info); };
    }
    if (payload->size() > ca::CFileDocument::kMaxOctets) {
        throw ca::Exception(ca::kErrBadData,
                            SetZORNAMessage(kMsgTooManyOctets) + ca::DecimalText(payload->size()));
    }
    const QByteArray octets(reinterpret_cast<const char*>(payload->data()),
                            static_cast<int>(payload->size()));
    return [octets](CCertInfoDlg& viewer) { return viewer.setCertificate(octets); };
}

// Fails for a viewer that did not open, with what can be said of the reason.
[[noreturn]] void ThrowNotShown(ca::CryptPacket& packet, std::uint32_t code) {
    if (code == ca::kErrServiceMode) {
        throw ca::Exception(code, SetZORNAMessage(kMsgNoWindow));
    }
    if (ca::FindFileData(packet.Request()) == nullptr) {
        throw ca::Exception(code);
    }
    throw ca::Exception(code, ca::SayRefused(ca::RequestPayload(packet), &ca::CertificateFault));
}

}  // namespace

// Answers once the window is up. 16131 where no window can be: in a silent module, without a Qt
// application with widgets, with too many windows open, and when the application's thread does not
// get to it in time ("SHOW_TIMEOUT").
void CCryptoModule::ShowCert(ca::CryptPacket& packet) {
    if (m_silent) {
        throw ca::Exception(ca::kErrServiceMode, SetZORNAMessage(kMsgSilentModule));
    }
    const std::uint64_t wait = ca::InitString(packet.context->InitParams())
                                   .GetUnsigned(L"SHOW_TIMEOUT", 1, kMaxWaitMs,
                                                static_cast<std::uint64_t>(ca::kGuiWait.count()));
    const std::uint32_t code = ca::RunInGuiThread(
        [fill = FillerOf(packet, *this, *m_provider)] { return OpenViewer(fill); },
        std::chrono::milliseconds(wait));
    if (code != ca::kErrNone) {
        ThrowNotShown(packet, code);
    }
    LogEvent(SetZORNAMessage(kMsgCertificateShown), /*isError=*/false);
}
