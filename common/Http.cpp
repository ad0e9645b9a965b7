#include "common/Http.h"

#include "common/ConfigFileParser.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/ErrorMessageHelper.h"
#include "common/Exception.h"
#include "common/HttpTransfer.h"
#include "common/Lng.h"
#include "common/Log.h"

#include <chrono>
#include <new>
#include <optional>

namespace ca {
namespace {

struct PostBody {
    std::span<const unsigned char> octets;
    const char* contentType;
};

constexpr int kMaxRedirects = 5;
// Nobody reads what a server answers to an upload; it is counted so that it ends.
constexpr std::uint32_t kMaxUploadAnswer = 1U << 20;

// The next URL of a transfer. A redirect to what is not a good URL is the server's fault.
HttpUrl Follow(const HttpTransfer& transfer, const HttpUrl& from, const std::string& location) {
    try {
        return FollowRedirect(from, u8u16(location));
    } catch (const Exception&) {
        transfer.RefuseRedirect(CURLE_URL_MALFORMAT);
    }
}

// A request from the checks to the answer, which is left in `answer`. What cannot even be begun is
// logged as message 905.
void RunTransfer(const std::wstring& url, const PostBody* body, const HttpSettings& settings,
                 std::uint32_t timeoutMs, HttpBody& answer) try {
    // One end for the whole transfer, redirects included.
    const HttpTransfer::Clock::time_point end =
        HttpTransfer::Clock::now() +
        std::chrono::milliseconds(HttpSettings::BoundedTimeout(timeoutMs));
    std::optional<HttpTransfer> transfer;
    HttpUrl target;
    try {
        target = ParseHttpUrl(url);
        transfer.emplace(settings, answer);
        if (body != nullptr) {
            transfer->SetPostBody(body->octets, body->contentType);
        }
    } catch (const Exception&) {
        LogEvent(SetZORNAMessage(kMsgHttpImpossible), /*isError=*/true);
        throw;
    }
    for (int redirects = 0;; ++redirects) {
        const std::string location = transfer->Run(target, end);
        if (location.empty()) {
            return;
        }
        if (redirects == kMaxRedirects) {
            transfer->RefuseRedirect(CURLE_TOO_MANY_REDIRECTS);
        }
        target = Follow(*transfer, target, location);
    }
} catch (const std::bad_alloc&) {
    throw Exception(kErrExecution);
}

// The upload's text with what went wrong after it.
std::wstring UploadText(const Exception& e) {
    return ::GetErrorMessage(kErrUpload, /*prefix=*/false) +
           (e.message.empty() ? ::GetErrorMessage(e.errorCode, /*prefix=*/false) : e.message);
}

}  // namespace

HttpSettings HttpSettings::FromConfig(const ConfigFileParser& config) {
    HttpSettings settings;
    settings.proxyAddress = config.GetProxyAddress();
    settings.proxyPort = static_cast<std::uint16_t>(config.GetProxyPort());
    settings.proxyType = static_cast<ProxyType>(config.GetProxyType());
    settings.proxyLogin = config.GetProxyLogin();
    settings.proxyPassword = config.GetProxyPassword();
    settings.totalTimeoutMs = static_cast<std::uint32_t>(config.GetGeneralTimeout());
    return settings;
}

std::uint32_t HttpSettings::BoundedTimeout(std::uint32_t milliseconds) {
    const bool isEndless = milliseconds == 0 || milliseconds > kMaxTimeoutMs;
    return isEndless ? kMaxTimeoutMs : milliseconds;
}

namespace Http {

void GetBlob(const std::wstring& url, const HttpSettings& settings, BytePtr& out,
             unsigned& outLength) {
    HttpBody sink(settings.maxBodySize, /*keep=*/true);
    RunTransfer(url, nullptr, settings, settings.totalTimeoutMs, sink);
    outLength = static_cast<unsigned>(sink.Size());  // maxBodySize has 32 bits
    out = sink.Take();
}

void Upload(const std::wstring& url, std::span<const unsigned char> body,
            const HttpSettings& settings, std::uint32_t timeoutMs) {
    HttpBody answer(kMaxUploadAnswer, /*keep=*/false);
    const PostBody post{body, "application/octet-stream"};
    try {
        RunTransfer(url, &post, settings, timeoutMs, answer);
    } catch (const HostForbidden&) {
        throw;
    } catch (const ReportedException& e) {
        throw ReportedException(kErrUpload, UploadText(e));
    } catch (const Exception& e) {
        if (e.errorCode == kErrCurlInit) {
            throw;
        }
        throw Exception(kErrUpload, UploadText(e));
    }
}

void Ask(const std::wstring& url, const char* contentType, std::span<const unsigned char> question,
         const HttpSettings& settings, BytePtr& out, unsigned& outLength) {
    HttpBody sink(settings.maxBodySize, /*keep=*/true);
    const PostBody post{question, contentType};
    RunTransfer(url, &post, settings, settings.totalTimeoutMs, sink);
    outLength = static_cast<unsigned>(sink.Size());  // maxBodySize has 32 bits
    out = sink.Take();
}

}  // namespace Http
}  // namespace ca
