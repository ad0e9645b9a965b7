#include "common/Http.h"

#include "common/CancelShield.h"
#include "common/ConfigFileParser.h"
#include "common/CurlLibrary.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/ErrorMessageHelper.h"
#include "common/Exception.h"
#include "common/HttpUrl.h"
#include "common/Lng.h"
#include "common/Log.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <initializer_list>
#include <iterator>
#include <new>
#include <optional>
#include <string_view>

namespace ca {
namespace {

using Clock = std::chrono::steady_clock;
using PostBody = std::span<const unsigned char>;

constexpr long kMaxRedirects = 5;
constexpr long kStatusProxyRefuses = 407;  // RFC 9110 15.5.8
constexpr long kRedirectKeepsPost = 3;     // CURL_REDIR_POST_301 | CURL_REDIR_POST_302
constexpr long kTlsVersion12 = 6;          // CURL_SSLVERSION_TLSv1_2
constexpr long kCheckHostName = 2;         // certificate must be issued for the host
constexpr long kAnyProxyAuth = ~0x10L;     // CURLAUTH_ANY
constexpr long kTransferBuffer = 0x20000;  // octets; fewer system calls than with the usual 16 KiB
constexpr std::uint32_t kMaxUploadAnswer = 1U << 20;
constexpr std::size_t kMaxHeader = 0x40000;  // octets of all header lines of a transfer
constexpr std::size_t kFirstCapacity = 0x4000;
constexpr std::size_t kMaxHint = 64U << 20;  // octets set aside on the word of a Content-Length

struct ProtocolSet {
    const char* names;  // CURLOPT_PROTOCOLS_STR
    long bits;          // CURLPROTO_HTTP, CURLPROTO_HTTPS
};
constexpr ProtocolSet kHttpAndHttps = {"http,https", 3};
constexpr ProtocolSet kHttpsOnly = {"https", 2};

// CURLPROXY_..., by ProxyType
constexpr long kProxyTypes[] = {0, 4, 6, 7};

// Puts the texts in the places of a message's "%i" and "%s", in order. The table's texts are no
// formats for wide strings, and numbers here exceed an int.
std::wstring FillMessage(ZornaMessage id, std::initializer_list<std::wstring> values) {
    std::wstring text = SetZORNAMessage(id);
    std::size_t position = 0;
    for (const std::wstring& value : values) {
        position = text.find(L'%', position);
        if (position == std::wstring::npos) {
            break;
        }
        text.replace(position, 2, value);
        position += value.size();
    }
    return text;
}

void LogMessage(ZornaMessage id, std::initializer_list<std::wstring> values, bool isError) {
    LogEvent(FillMessage(id, values).c_str(), isError);
}

// A body as it arrives. Growing by realloc moves pages of a large block instead of copying them, so
// the only copy is the one out of the library's buffer.
class BodySink {
  public:
    BodySink(std::size_t limit, bool keep) : m_limit(limit), m_keep(keep) {}

    // False when the limit is reached. Throws std::bad_alloc.
    bool Append(const char* data, std::size_t size, CurlOffset announced) {
        if (size > m_limit - m_size) {
            return false;
        }
        if (m_keep) {
            Reserve(m_size + size, announced);
            std::memcpy(m_block.Get() + m_size, data, size);
        }
        m_size += size;
        return true;
    }

    std::size_t Size() const { return m_size; }
    /// Never null.
    BytePtr Take() { return m_block ? std::move(m_block) : BytePtr::Make(0); }

  private:
    void Reserve(std::size_t needed, CurlOffset announced) {
        if (needed <= m_capacity) {
            return;
        }
        std::size_t capacity = std::max({needed, m_capacity * 2, kFirstCapacity});
        if (m_capacity == 0 && announced > 0) {
            const auto hint = static_cast<std::size_t>(announced);
            capacity = std::max(needed, std::min(hint, kMaxHint));
        }
        capacity = std::min(capacity, std::max(m_limit, needed));
        m_block.Resize(capacity);
        m_capacity = capacity;
    }

    BytePtr m_block;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
    std::size_t m_limit;
    bool m_keep;
};

std::uint32_t BoundedTimeout(std::uint32_t milliseconds) {
    const bool isEndless = milliseconds == 0 || milliseconds > HttpSettings::kMaxTimeoutMs;
    return isEndless ? HttpSettings::kMaxTimeoutMs : milliseconds;
}

bool IsControl(wchar_t c) {
    return (c >= 0 && c < 0x20) || (c >= 0x7F && c < 0xA0);
}

// A text for the library, which would cut it at a NUL and put line ends into a header.
std::string OptionText(const std::wstring& text) {
    if (std::any_of(text.begin(), text.end(), IsControl)) {
        throw Exception(kErrParameters);
    }
    return u16u8(text);
}

// Transfers given up for what the server's answer holds or leads to; the URL itself has been
// checked before. Every other number is the connection's fault.
constexpr int kServerFaults[] = {
    kCurlUnsupportedProtocol,  // of a redirect, or an answer that is not HTTP
    kCurlUrlMalformed,         // of a redirect
    kCurlWeirdServerReply,    kCurlHttp2,
    kCurlWriteError,  // more body than allowed
    kCurlTooManyRedirects,    kCurlBadContentEncoding,
    kCurlFileSizeExceeded,  // more body announced than allowed
    kCurlHttp2Stream,
};

bool IsSuccess(long status) {
    return status >= 200 && status < 300;
}

ErrorCode TransferError(int curlCode) {
    const bool isServers = std::find(std::begin(kServerFaults), std::end(kServerFaults),
                                     curlCode) != std::end(kServerFaults);
    return isServers ? kErrServer : kErrConnection;
}

// One request with its answer.
class Transfer {
  public:
    Transfer(HttpUrl url, const HttpSettings& settings, std::uint32_t timeoutMs, BodySink& sink)
        : m_url(std::move(url)), m_sink(sink), m_progressInterval(settings.progressIntervalMs) {
        SetSafety();
        SetLimits(settings, timeoutMs);
        SetTrust(settings);
        SetProxy(settings);
        SetCallbacks();
        m_curl.Set(kCurlUrl, m_url.text);
    }
    Transfer(const Transfer&) = delete;  // the library's callbacks hold the address
    Transfer& operator=(const Transfer&) = delete;

    // The body is not copied: it must outlive Run().
    void SetPostBody(PostBody body) {
        // A null pointer would make the library ask a read callback for the body.
        const void* data = body.empty() ? static_cast<const void*>("") : body.data();
        m_curl.Set(kCurlPost, 1L);
        m_curl.SetSize(kCurlPostFieldSize, static_cast<CurlOffset>(body.size()));
        m_curl.Set(kCurlPostFields, data);
        m_curl.Set(kCurlPostRedirects, kRedirectKeepsPost);
        m_curl.AddHeader("Content-Type: application/octet-stream");
        m_curl.AddHeader("Expect:");  // no second of waiting for a "100 Continue"
        m_sendSize = body.size();
    }

    void Run();

  private:
    void SetSafety();
    void SetLimits(const HttpSettings& settings, std::uint32_t timeoutMs);
    void SetTrust(const HttpSettings& settings);
    void SetProxy(const HttpSettings& settings);
    void SetCallbacks();
    void SetProtocols(CurlOption textOption, CurlOption bitsOption, const ProtocolSet& set);
    bool IsProxyRefusal(long status) const;
    void Judge(int code);

    static std::size_t OnBody(char* data, std::size_t size, std::size_t count, void* user) noexcept;
    static std::size_t OnHeader(char* data, std::size_t size, std::size_t count,
                                void* user) noexcept;
    static int OnProgress(void* user, CurlOffset downloadTotal, CurlOffset downloaded,
                          CurlOffset uploadTotal, CurlOffset uploaded);
    void LogProgress(CurlOffset downloaded, CurlOffset uploaded);

    const HttpUrl m_url;
    BodySink& m_sink;
    CurlEasy m_curl;
    std::chrono::milliseconds m_progressInterval;
    Clock::time_point m_lastProgress = Clock::now();
    std::size_t m_sendSize = 0;
    std::size_t m_headerSize = 0;
    bool m_hasProxy = false;
    bool m_isHeaderComplete = false;  // of the answer that came last
    bool m_outOfMemory = false;       // in a callback, where nothing may be thrown
};

void Transfer::SetSafety() {
    m_curl.Set(kCurlNoSignal, 1L);  // no SIGALRM for time-outs: the process is the host's
    m_curl.Set(kCurlFailOnError, 1L);
    m_curl.Set(kCurlFollowLocation, 1L);
    m_curl.Set(kCurlMaxRedirects, kMaxRedirects);
    SetProtocols(kCurlProtocolsText, kCurlProtocols, kHttpAndHttps);
    SetProtocols(kCurlRedirectProtocolsText, kCurlRedirectProtocols,
                 m_url.isSecure ? kHttpsOnly : kHttpAndHttps);
    // A time-out must not wait for a name look-up that hangs; the look-up thread frees its own.
    m_curl.TrySet(kCurlQuickExit, 1L);
}

void Transfer::SetProtocols(CurlOption textOption, CurlOption bitsOption, const ProtocolSet& set) {
    if (!m_curl.TrySet(textOption, set.names)) {
        m_curl.Set(bitsOption, set.bits);
    }
}

void Transfer::SetLimits(const HttpSettings& settings, std::uint32_t timeoutMs) {
    m_curl.Set(kCurlConnectTimeoutMs, static_cast<long>(BoundedTimeout(settings.connectTimeoutMs)));
    m_curl.Set(kCurlTimeoutMs, static_cast<long>(BoundedTimeout(timeoutMs)));
    m_curl.Set(kCurlLowSpeedLimit, static_cast<long>(settings.lowSpeedBytesPerSecond));
    m_curl.Set(kCurlLowSpeedTime, static_cast<long>(settings.lowSpeedSeconds));
    m_curl.SetSize(kCurlMaxFileSize, static_cast<CurlOffset>(settings.maxBodySize));
    m_curl.TrySet(kCurlBufferSize, kTransferBuffer);
}

void Transfer::SetTrust(const HttpSettings& settings) {
    m_curl.Set(kCurlSslVerifyPeer, 1L);
    m_curl.Set(kCurlSslVerifyHost, kCheckHostName);
    m_curl.Set(kCurlSslVersion, kTlsVersion12);
    if (!settings.caFile.empty()) {
        m_curl.Set(kCurlCaFile, OptionText(settings.caFile));
    }
    if (!settings.caPath.empty()) {
        m_curl.Set(kCurlCaPath, OptionText(settings.caPath));
    }
    m_curl.Set(kCurlUserAgent, OptionText(settings.userAgent));
}

void Transfer::SetProxy(const HttpSettings& settings) {
    m_curl.Set(kCurlNoProxy, std::string());  // instead of the environment's
    if (settings.proxyAddress.empty()) {
        m_curl.Set(kCurlProxy, std::string());  // likewise
        return;
    }
    const auto type = static_cast<std::size_t>(settings.proxyType);
    if (type >= std::size(kProxyTypes) || settings.proxyPort == 0) {
        throw Exception(kErrParameters, L"ProxyType, ProxyPort");
    }
    m_hasProxy = true;
    m_curl.Set(kCurlProxy, ParseHost(settings.proxyAddress));
    m_curl.Set(kCurlProxyPort, static_cast<long>(settings.proxyPort));
    m_curl.Set(kCurlProxyType, kProxyTypes[type]);
    if (!settings.proxyLogin.empty()) {
        m_curl.Set(kCurlProxyAuth, kAnyProxyAuth);
        m_curl.Set(kCurlProxyUser, OptionText(settings.proxyLogin));
        m_curl.Set(kCurlProxyPassword, OptionText(settings.proxyPassword));
    }
}

void Transfer::SetCallbacks() {
    m_curl.Set(kCurlWriteFunction, static_cast<CurlWriteFunction>(&Transfer::OnBody));
    m_curl.Set(kCurlWriteData, static_cast<const void*>(this));
    m_curl.Set(kCurlHeaderFunction, static_cast<CurlWriteFunction>(&Transfer::OnHeader));
    m_curl.Set(kCurlHeaderData, static_cast<const void*>(this));
    m_curl.Set(kCurlNoProgress, 0L);
    m_curl.Set(kCurlProgressFunction, static_cast<CurlProgressFunction>(&Transfer::OnProgress));
    m_curl.Set(kCurlProgressData, static_cast<const void*>(this));
}

std::size_t Transfer::OnBody(char* data, std::size_t size, std::size_t count, void* user) noexcept {
    Transfer& self = *static_cast<Transfer*>(user);
    const std::size_t octets = size * count;  // size is always 1
    try {
        if (self.m_sink.Append(data, octets, self.m_curl.AnnouncedLength())) {
            return octets;
        }
    } catch (const std::bad_alloc&) {
        self.m_outOfMemory = true;
    }
    return octets + 1;  // any other number than the octets given ends the transfer
}

std::size_t Transfer::OnHeader(char* data, std::size_t size, std::size_t count,
                               void* user) noexcept {
    Transfer& self = *static_cast<Transfer*>(user);
    const std::string_view line(data, size * count);
    self.m_isHeaderComplete = line == "\r\n" || line == "\n";
    // The library keeps the lines; not every release of it bounds their number.
    self.m_headerSize += line.size();
    return self.m_headerSize <= kMaxHeader ? line.size() : 0;
}

int Transfer::OnProgress(void* user, CurlOffset, CurlOffset downloaded, CurlOffset,
                         CurlOffset uploaded) {
    Transfer& self = *static_cast<Transfer*>(user);
    const Clock::time_point now = Clock::now();
    if (now - self.m_lastProgress < self.m_progressInterval) {
        return 0;
    }
    self.m_lastProgress = now;
    try {
        self.LogProgress(downloaded, uploaded);
        return 0;
    } catch (...) {
        LetThreadEnd();
        return 1;  // out of memory, or the host's callback threw: ends the transfer
    }
}

// What is still to be sent, then what has come back so far.
void Transfer::LogProgress(CurlOffset downloaded, CurlOffset uploaded) {
    const CurlOffset left = static_cast<CurlOffset>(m_sendSize) - uploaded;
    if (left > 0 && downloaded == 0) {
        LogMessage(kMsgHttpSending, {std::to_wstring(left), m_url.display}, false);
    } else if (downloaded > 0) {
        LogMessage(kMsgHttpSent, {std::to_wstring(downloaded)}, false);
    }
}

void Transfer::Run() {
    LogMessage(kMsgHttpSending, {std::to_wstring(m_sendSize), m_url.display}, false);
    Judge(m_curl.Perform());
    LogMessage(kMsgHttpSent, {std::to_wstring(m_sink.Size())}, false);
}

// Whether the server was not even reached. A plain request's other statuses do not tell who sent
// them.
bool Transfer::IsProxyRefusal(long status) const {
    const long tunnel = m_curl.TunnelStatus();
    const bool hasNoTunnel = tunnel != 0 && !IsSuccess(tunnel);
    return m_hasProxy && (hasNoTunnel || status == kStatusProxyRefuses);
}

// Logs and throws what went wrong; the exception's message is the detail.
void Transfer::Judge(int code) {
    if (code == kCurlOk && !m_isHeaderComplete) {
        // The library takes an answer that breaks off in its header for one without a body.
        code = kCurlPartialFile;
    }
    if (code == kCurlOutOfMemory && !m_outOfMemory && !m_isHeaderComplete && m_curl.IsSent()) {
        // So the library reports a header line that is longer than its limit.
        code = kCurlWeirdServerReply;
    }
    const long status = m_curl.Status();
    if (code == kCurlHttpReturnedError || (code == kCurlOk && !IsSuccess(status))) {
        LogMessage(kMsgHttpRequestError, {std::to_wstring(status), std::to_wstring(code)}, true);
        throw ReportedException(IsProxyRefusal(status) ? kErrConnection : kErrServer,
                                L"HTTP " + std::to_wstring(status));
    }
    if (code != kCurlOk) {
        LogMessage(kMsgHttpNotSent, {std::to_wstring(code)}, true);
        if (m_outOfMemory || code == kCurlOutOfMemory) {
            throw std::bad_alloc();
        }
        std::wstring detail = u8u16(m_curl.ErrorText(code));
        MakePrintable(detail);  // it may quote the server
        LogEvent(detail.c_str(), true);
        throw ReportedException(TransferError(code), detail);
    }
}

// A request from the checks to the answer, which is left in `sink`. What cannot even be begun is
// logged as message 905.
void RunTransfer(const std::wstring& url, const PostBody* body, const HttpSettings& settings,
                 std::uint32_t timeoutMs, BodySink& sink) try {
    std::optional<Transfer> transfer;
    try {
        transfer.emplace(ParseHttpUrl(url), settings, timeoutMs, sink);
        if (body != nullptr) {
            transfer->SetPostBody(*body);
        }
    } catch (const Exception&) {
        LogMessage(kMsgHttpImpossible, {}, true);
        throw;
    }
    transfer->Run();
} catch (const std::bad_alloc&) {
    throw Exception(kErrExecution);
}

// The upload's text with what went wrong behind it.
std::wstring UploadText(const Exception& e) {
    return ::GetErrorMessage(kErrUpload, false) +
           (e.message.empty() ? ::GetErrorMessage(e.errorCode, false) : e.message);
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

namespace Http {

void GetBlob(const std::wstring& url, const HttpSettings& settings, BytePtr& out,
             unsigned& outLength) {
    BodySink sink(settings.maxBodySize, /*keep=*/true);
    RunTransfer(url, nullptr, settings, settings.totalTimeoutMs, sink);
    outLength = static_cast<unsigned>(sink.Size());  // maxBodySize has 32 bits
    out = sink.Take();
}

void Upload(const std::wstring& url, std::span<const unsigned char> body,
            const HttpSettings& settings, std::uint32_t timeoutMs) {
    BodySink answer(kMaxUploadAnswer, /*keep=*/false);
    try {
        RunTransfer(url, &body, settings, timeoutMs, answer);
    } catch (const ReportedException& e) {
        throw ReportedException(kErrUpload, UploadText(e));
    } catch (const Exception& e) {
        if (e.errorCode == kErrCurlInit) {
            throw;
        }
        throw Exception(kErrUpload, UploadText(e));
    }
}

}  // namespace Http
}  // namespace ca
