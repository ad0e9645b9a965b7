#include "module/CryptoModule.h"

#include "common/CancelShield.h"
#include "common/Cleanse.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/ErrorMessageHelper.h"
#include "common/Exception.h"
#include "common/HostRules.h"
#include "common/InitString.h"
#include "common/Lng.h"
#include "module/CallContext.h"
#include "module/CancellationToken.h"
#include "module/GuiThread.h"
#include "module/JsonText.h"
#include "module/MessageBox.h"
#include "module/Provider.h"
#include "module/RecordTypes.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>
#include <memory>
#include <new>
#include <span>
#include <stdexcept>
#include <vector>

namespace {

// Deliberate: every failure of a request is logged under this one position, whatever line of this
// file reports it; hosts look for it in their logs.
constexpr const char* kReportFile = "CryptoModule.cpp";
constexpr long kReportLine = 53;

constexpr int kLogModePayloads = 3;                // of the configuration's LogMode
constexpr std::uint32_t kUploadTimeoutMs = 30000;  // the whole transfer
constexpr std::size_t kAnswerCapacity = 256;       // most answers fit without growing

void LogFailure(std::uint32_t code, const wchar_t* text) {
    const std::wstring location = ca::GetLineString(kReportFile, kReportLine, __DATE__);
    ca::LogError(text, location.c_str(), code, /*throwIt=*/false);
}

void ReportFailure(std::uint32_t code, ca::CryptResponse& response) {
    LogFailure(code, L"");
    response.errorCode = code;
    response.errorMessage = GetErrorMessage(code, /*prefix=*/true);
}

// The line about a payload. It takes 5.3 times the payload's octets, so it is made in its place,
// by parts that need no room worth speaking of.
std::wstring PayloadLine(std::span<const unsigned char> payload) {
    constexpr std::wstring_view kPrefix = L"Request filedata : ";
    constexpr std::size_t kPart = 3072;  // octets; a multiple of three, so that no part is padded
    char narrow[kPart / 3 * 4];
    wchar_t wide[std::size(narrow)];
    std::wstring line;
    line.reserve(kPrefix.size() + (payload.size() + 2) / 3 * 4);
    line += kPrefix;
    while (!payload.empty()) {
        const std::size_t size = std::min(kPart, payload.size());
        unsigned length = 0;
        base64_encode(payload.data(), static_cast<unsigned>(size), narrow, length);
        std::copy_n(narrow, length, wide);
        line.append(wide, length);
        payload = payload.subspan(size);
    }
    return line;
}

// Reads the request. What is wrong in one of its keys is said with the key's name.
void ReadRequest(const CMPacket& packet, ca::CryptRequest& request) {
    ca::ClearJsonPosition();
    try {
        request.FromJson(packet.request, packet.requestLength);
    } catch (ca::Exception& fault) {
        std::wstring place = ca::JsonPlace();
        if (!place.empty() && !fault.message.empty()) {
            place += L": ";
        }
        fault.message.insert(0, place);
        throw;
    }
}

// Refusals of an operation as such: nothing was run, and the answer says it all.
bool IsRefusal(const ca::Exception& failure) {
    return failure.message.empty() && (failure.errorCode == ca::kErrModeNotSupported ||
                                       failure.errorCode == ca::kErrPrivateKeyAccess);
}

// The code's text. What the failure says fills the gap that some have.
std::wstring FailureText(const ca::Exception& failure) {
    static constexpr std::wstring_view kGap = L"%s";
    std::wstring text = GetErrorMessage(failure.errorCode, true);
    const std::size_t gap = failure.message.empty() ? std::wstring::npos : text.find(kGap);
    if (gap != std::wstring::npos) {
        text.replace(gap, kGap.size(), failure.message);
    }
    return text;
}

// Writes the answer into a buffer of its own and hands that to the host.
void SetAnswer(CMPacket& packet, ca::CryptResponse& response) {
    ca::JsonBuffer text(&ca::jsonHeap, kAnswerCapacity);
    response.TakeJson(text);
    const ca::FileData* raw = response.RawFileData();
    if (raw == nullptr) {
        // Raw file data is needed once more, after the text.
        response.objects.SetObject(nullptr, /*clear=*/true);  // their memory serves the answer
    }
    const std::size_t textSize = text.GetSize();
    const std::size_t rawSize = raw != nullptr ? raw->size() : 0;
    // The terminating NUL counts only when octets follow it.
    const std::uint64_t answerSize = std::uint64_t{textSize} + (raw != nullptr ? 1 + rawSize : 0);
    if (answerSize > std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("answer beyond the interface's 32 bits");
    }

    // One octet at least: the NUL that ends the text for hosts that read it as one.
    text.Reserve(1 + rawSize);
    text.Put('\0');
    if (rawSize != 0) {
        std::memcpy(text.Push(rawSize), raw->data(), rawSize);
    }
    text.stack_.ShrinkToFit();
    packet.responseSize = static_cast<std::uint32_t>(answerSize);
    packet.response = ca::DetachText(text);  // the host calls free()
}

// Links a token into a packet as long as the call runs.
class CTokenLink {
  public:
    CTokenLink(ca::CryptPacket& packet, CancellationToken& token) : m_packet(packet) {
        m_packet.cancellation = &token;
    }
    CTokenLink(const CTokenLink&) = delete;
    CTokenLink& operator=(const CTokenLink&) = delete;
    ~CTokenLink() { m_packet.cancellation = nullptr; }

  private:
    ca::CryptPacket& m_packet;
};

// Cleanses the copy of the parameters, which may hold passwords; the host's text is the host's.
class CCleansedParams {
  public:
    explicit CCleansedParams(std::wstring& text) : m_text(text) {}
    CCleansedParams(const CCleansedParams&) = delete;
    CCleansedParams& operator=(const CCleansedParams&) = delete;
    ~CCleansedParams() { ca::CleanseText(m_text); }

  private:
    std::wstring& m_text;
};

}  // namespace

namespace ca {

void CryptoModule::ProcessJson(CMPacket& packet) {
    CryptPacket call(packet.interactive ? &m_ownTransfers : &m_serviceTransfers);
    const CCleansedParams cleansed(call.request.extInitParams);
    try {
        ReadRequest(packet, call.request);
        if (m_config.GetLogMode() == kLogModePayloads) {
            LogPayload(call);
        }
        // Kept aside, since an operation may take the address over.
        const std::wstring uploadUrl = call.request.uploadUrl;
        call.response.isAttached = call.request.isAttached;
        ProcessClientRequest(call, packet.interactive);
        call.response.attachBinary = call.request.attachBinary;
        // Sent at the end of a stream, not with each of its pieces.
        if (call.response.errorCode == kErrNone && !uploadUrl.empty() &&
            call.request.streamFinalChunk) {
            call.request.uploadUrl = uploadUrl;  // an operation may have used it up
            call.UploadFileData(kUploadTimeoutMs);
        }
    } catch (const ReportedException& failure) {
        // What LogError() has thrown stands in the log already.
        ReportFailure(failure.errorCode, call.response);
    } catch (const Exception& failure) {
        if (!failure.message.empty()) {
            LogLine(RaisedAt(failure) + L": " + failure.message, /*isError=*/true);
        }
        ReportFailure(failure.errorCode, call.response);
    }
    SetAnswer(packet, call.response);
}

void CryptoModule::AnswerFailure(CMPacket& packet, const char* why) {
    packet.response = nullptr;
    packet.responseSize = 0;
    // The report first: a thread that is cancelled while it logs leaves no answer behind.
    try {
        LogFailure(kErrExecution, u8u16(std::string(why)).c_str());
    } catch (...) {
        LetThreadEnd();
        // Deliberate: no memory for a line, or the host's callback threw. The answer goes on.
    }
    try {
        CryptResponse response;
        response.errorCode = kErrExecution;
        response.errorMessage = ::GetErrorMessage(kErrExecution, /*prefix=*/true);
        SetAnswer(packet, response);
    } catch (const std::bad_alloc&) {
        // Deliberate: no memory for the text; null says so.
    }
}

void CryptoModule::LogPayload(CryptPacket& packet) const {
    // The payload after decoding: what an operation will see.
    const FileData* payload = FindFileData(packet.request.objects);
    if (payload == nullptr) {
        return;
    }
    LogEvent(PayloadLine(payload->Octets()).c_str(), /*isError=*/false);
}

bool CryptoModule::ReadConfig() {
    std::wstring errorText;
    const bool wasRead = m_config.ReadConfig(errorText, m_silent);
    WarnOfConfig(wasRead, errorText);
    return true;
}

void CryptoModule::ReadPkiConfig() {
    std::wstring errorText;
    const bool wasRead = m_pkiConfig.ReadConfig(m_config, errorText, m_silent);
    WarnOfConfig(wasRead, errorText);
    SetTransfers(wasRead);
}

void CryptoModule::SetTransfers(bool isPkiConfigRead) {
    const PkiNetwork& network = m_pkiConfig.Settings().network;
    HttpSettings settings = HttpSettings::FromConfig(m_config);
    settings.maxBodySize = static_cast<std::uint32_t>(network.maxFetchSize);
    // A request of a user may go anywhere; one of a service where the configuration allows.
    m_ownTransfers = {settings, settings};
    m_serviceTransfers = m_ownTransfers;
    const auto rules = [&](const std::vector<std::wstring>& patterns) {
        // After a broken PKI file nowhere: rules that nobody could read must not allow everything.
        return std::make_shared<const HostRules>(isPkiConfigRead ? HostRules(patterns)
                                                                 : HostRules());
    };
    m_serviceTransfers.fetch.hosts = rules(network.fetch);
    m_serviceTransfers.upload.hosts = rules(network.upload);
}

// One warning for one file, unless nothing was wrong with it.
void CryptoModule::WarnOfConfig(bool wasRead, const std::wstring& errorText) {
    if (m_silent || (wasRead && errorText.empty())) {
        return;
    }
    std::wstring warning = SetZORNAMessage(kMsgConfigReadFailed) + errorText;
    if (!wasRead) {
        warning += SetZORNAMessage(kMsgUsingDefaults);
    }
    // Without a window the warning waits for the log, which is not there yet.
    if (!MessageBoxWarning(warning, SetZORNAMessage(kMsgConfigReadCaption))) {
        m_warnings.push_back(std::move(warning));
    }
}

std::vector<std::wstring> CryptoModule::TakeWarnings() {
    std::vector<std::wstring> taken = std::exchange(m_warnings, {});
    // A window has lines, a log entry is one line.
    for (std::wstring& warning : taken) {
        std::vector<std::wstring> lines;
        Split(warning, L"\r\n", lines);
        warning.clear();
        for (const std::wstring& line : lines) {
            warning += (warning.empty() ? L"" : L" ") + line;
        }
    }
    return taken;
}

}  // namespace ca

CCryptoModule::CCryptoModule(bool silent)
    : ca::CryptoModule(silent),
      m_clients(this),
      m_streams(this),
      m_provider(ca::CreateProvider()) {}

CCryptoModule::~CCryptoModule() {
    // First: no line must reach the host's callback while its module goes away.
    m_logClaim.Release();
    CleanUp();
}

bool CCryptoModule::Init(LogCallback log) {
    if (!m_silent && ca::HasWidgetApplication()) {
        // Before anything can ask for a window.
        ca::WatchApplication();
    }
    if (!ReadConfig()) {
        return false;
    }
    ReadPkiConfig();
    m_baseInitParams = ca::BuildBaseInitString(m_config, PkiConfig());
    m_clients.SetMaxMemory(static_cast<std::size_t>(PkiConfig().Settings().clients.maxMemory));
    for (const auto* places :
         {&PkiConfig().Settings().trust.intermediates, &PkiConfig().Settings().trust.stores}) {
        for (const std::wstring& place : *places) {
            m_issuers.AddPlace(place);
        }
    }
    // Held before it is used: two modules of a process share one callback.
    m_logClaim.Hold(log);
    std::vector<std::wstring> customTexts = m_config.GetCustomErrorHandlers();
    if (!LogInit(log, customTexts)) {
        return false;
    }
    // Now that there is a log.
    for (std::wstring& warning : TakeWarnings()) {
        ca::LogLine(std::move(warning), /*isError=*/true);
    }
    LogEvent(SetZORNAMessage(kMsgModuleInitialized), /*isError=*/false);
    return true;
}

bool CCryptoModule::Verifies() const noexcept {
    return m_provider->Verifies();
}

void CCryptoModule::CleanUp() {
    m_clients.CleanUp();
}

void CCryptoModule::ProcessClientRequest(ca::CryptPacket& packet, bool interactive) {
    // Deliberate: the setting is read once a request, whatever the request is.
    const bool mayUseKeys = m_config.GetAllowServicePrivateKeyAccess() || interactive;
    // It makes the client known, refreshes it, and lets no sweep take it while the request runs.
    CCallContext context(packet, this, mayUseKeys);
    ca::LogLine(L"clientId =  " + packet.request.clientId, /*isError=*/false);

    CancellationToken token;
    const CTokenLink link(packet, token);
    try {
        RunMode(packet);
    } catch (const ca::ReportedException& failure) {
        packet.response.errorCode = failure.errorCode;
    } catch (const ca::Exception& failure) {
        packet.response.errorCode = failure.errorCode;
        if (packet.response.errorMessage.empty()) {
            packet.response.errorMessage = FailureText(failure);
        }
        if (!IsRefusal(failure)) {
            ca::LogError(failure.message.c_str(), ca::RaisedAt(failure).c_str(), failure.errorCode,
                         /*throwIt=*/false);
        }
    }
    // Who cancelled the request takes the answer as it is.
    if (token.IsCancelled()) {
        return;
    }
    if (packet.response.errorMessage.empty()) {
        packet.response.errorMessage = GetErrorMessage(packet.response.errorCode, /*prefix=*/true);
    }
    // A test call leaves no trace of an operation in the log.
    if (!packet.request.test) {
        LogEvent(L"<", /*isError=*/false);
    }
}

// The gate comes before the parameters: what may not run is not looked at.
void CCryptoModule::RunMode(ca::CryptPacket& packet) {
    const CModeRow* row = FindMode(packet.request.mode);
    if (row == nullptr) {
        throw ca::Exception(ca::kErrModeNotSupported);
    }
    if (row->gate == kGated && !packet.context->MayUseKeys()) {
        throw ca::Exception(ca::kErrPrivateKeyAccess);
    }
    if (row->handler != nullptr && !packet.request.test) {
        packet.context->RequestParams();  // what breaks their grammar runs nothing
        LogEvent(row->logText, /*isError=*/false);
        (this->*row->handler)(packet);
    }
}
