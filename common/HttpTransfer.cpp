#include "common/HttpTransfer.h"

#include "common/CancelShield.h"
#include "common/DecimalText.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/HostRules.h"
#include "common/Lng.h"
#include "common/Log.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <new>
#include <string_view>
#include <sys/socket.h>

namespace ca {
namespace {

constexpr long kStatusProxyRefuses = 407;  // RFC 9110, 15.5.8
constexpr long kStatusSeeOther = 303;      // RFC 9110, 15.4.4: the answer is elsewhere, by GET
constexpr long kCheckHostName = 2;         // certificate must be issued for the host
constexpr long kTransferBuffer = 0x20000;  // octets; fewer system calls than with the usual 16 KiB
constexpr std::size_t kMaxHeader = 0x40000;  // octets of all header lines of a transfer

constexpr const char* kHttpAndHttps = "http,https";

// By ProxyType.
constexpr long kProxyTypes[] = {CURLPROXY_HTTP, CURLPROXY_SOCKS4, CURLPROXY_SOCKS4A,
                                CURLPROXY_SOCKS5_HOSTNAME};

// Puts the texts in the places of a message's "%i" and "%s", in order. The table's texts are no
// formats for wide strings, and numbers here exceed an int.
std::wstring FillMessage(std::wstring text, std::initializer_list<std::wstring> values) {
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
    LogEvent(FillMessage(SetZORNAMessage(id), values).c_str(), isError);
}

bool IsControl(wchar_t c) {
    return (c >= 0 && c < 0x20) || (c >= 0x7F && c < 0xA0);
}

// A text for the library, which would cut it at a NUL and put line ends into a header.
std::string OptionText(const std::wstring& text) {
    if (std::ranges::any_of(text, IsControl)) {
        throw Exception(kErrParameters);
    }
    return u16u8(text);
}

// Transfers given up for what the server's answer holds or led to; the request's own URL has been
// checked before. Every other number is the connection's fault.
constexpr int kServerFaults[] = {
    CURLE_UNSUPPORTED_PROTOCOL,  // an answer that is not HTTP
    CURLE_URL_MALFORMAT,        CURLE_WEIRD_SERVER_REPLY, CURLE_HTTP2,
    CURLE_WRITE_ERROR,  // more body than allowed
    CURLE_BAD_CONTENT_ENCODING,
    CURLE_FILESIZE_EXCEEDED,  // more body announced than allowed
    CURLE_HTTP2_STREAM,
};

bool IsSuccess(long status) {
    return status >= 200 && status < 300;
}

ErrorCode TransferError(int curlCode) {
    const bool isServers = std::ranges::find(kServerFaults, curlCode) != std::end(kServerFaults);
    return isServers ? kErrServer : kErrConnection;
}

}  // namespace

HttpTransfer::HttpTransfer(const HttpSettings& settings, HttpBody& answer)
    : m_settings(settings), m_body(answer), m_url{} {
    SetSafety();
    SetLimits();
    SetTrust();
    SetProxy();
    SetCallbacks();
}

void HttpTransfer::SetPostBody(std::span<const unsigned char> body, const char* contentType) {
    // A null pointer would make the library ask a read callback for the body.
    const void* data = body.empty() ? static_cast<const void*>("") : body.data();
    m_curl.Set(CURLOPT_POST, 1L);
    m_curl.SetSize(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    m_curl.Set(CURLOPT_POSTFIELDS, data);
    m_curl.AddHeader((std::string("Content-Type: ") + contentType).c_str());
    m_curl.AddHeader("Expect:");  // no second of waiting for a "100 Continue"
    m_isPost = true;
    m_sendSize = body.size();
}

void HttpTransfer::SetSafety() {
    m_curl.Set(CURLOPT_NOSIGNAL, 1L);  // no SIGALRM for time-outs: the process is the host's
    m_curl.Set(CURLOPT_FAILONERROR, 1L);
    if (!m_curl.TrySet(CURLOPT_PROTOCOLS_STR, kHttpAndHttps)) {
        m_curl.Set(CURLOPT_PROTOCOLS, CURLPROTO_HTTP | CURLPROTO_HTTPS);
    }
    // A time-out must not wait for a name look-up that hangs; the look-up thread frees its own.
    m_curl.TrySet(CURLOPT_QUICK_EXIT, 1L);
}

void HttpTransfer::SetLimits() {
    m_curl.Set(CURLOPT_CONNECTTIMEOUT_MS,
               static_cast<long>(HttpSettings::BoundedTimeout(m_settings.connectTimeoutMs)));
    m_curl.Set(CURLOPT_LOW_SPEED_LIMIT, static_cast<long>(m_settings.lowSpeedBytesPerSecond));
    m_curl.Set(CURLOPT_LOW_SPEED_TIME, static_cast<long>(m_settings.lowSpeedSeconds));
    m_curl.SetSize(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(m_settings.maxBodySize));
    m_curl.TrySet(CURLOPT_BUFFERSIZE, kTransferBuffer);
}

void HttpTransfer::SetTrust() {
    m_curl.Set(CURLOPT_SSL_VERIFYPEER, 1L);
    m_curl.Set(CURLOPT_SSL_VERIFYHOST, kCheckHostName);
    // Older versions are given up (RFC 8996).
    m_curl.Set(CURLOPT_SSLVERSION, CURL_SSLVERSION_TLSv1_2);
    if (!m_settings.caFile.empty()) {
        m_curl.Set(CURLOPT_CAINFO, OptionText(m_settings.caFile));
    }
    if (!m_settings.caPath.empty()) {
        m_curl.Set(CURLOPT_CAPATH, OptionText(m_settings.caPath));
    }
    m_curl.Set(CURLOPT_USERAGENT, OptionText(m_settings.userAgent));
}

void HttpTransfer::SetProxy() {
    m_curl.Set(CURLOPT_NOPROXY, std::string());  // instead of the environment's
    if (m_settings.proxyAddress.empty()) {
        m_curl.Set(CURLOPT_PROXY, std::string());  // likewise
        return;
    }
    const auto type = static_cast<std::size_t>(m_settings.proxyType);
    if (type >= std::size(kProxyTypes) || m_settings.proxyPort == 0) {
        throw Exception(kErrParameters, L"ProxyType, ProxyPort");
    }
    m_hasProxy = true;
    m_curl.Set(CURLOPT_PROXY, ParseHost(m_settings.proxyAddress));
    m_curl.Set(CURLOPT_PROXYPORT, static_cast<long>(m_settings.proxyPort));
    m_curl.Set(CURLOPT_PROXYTYPE, kProxyTypes[type]);
    if (!m_settings.proxyLogin.empty()) {
        m_curl.Set(CURLOPT_PROXYAUTH, static_cast<long>(CURLAUTH_ANY));
        m_curl.Set(CURLOPT_PROXYUSERNAME, OptionText(m_settings.proxyLogin));
        m_curl.Set(CURLOPT_PROXYPASSWORD, OptionText(m_settings.proxyPassword));
    }
}

void HttpTransfer::SetCallbacks() {
    m_curl.Set(CURLOPT_WRITEFUNCTION, static_cast<curl_write_callback>(&HttpTransfer::OnBody));
    m_curl.Set(CURLOPT_WRITEDATA, static_cast<const void*>(this));
    m_curl.Set(CURLOPT_HEADERFUNCTION, static_cast<curl_write_callback>(&HttpTransfer::OnHeader));
    m_curl.Set(CURLOPT_HEADERDATA, static_cast<const void*>(this));
    m_curl.Set(CURLOPT_NOPROGRESS, 0L);
    m_curl.Set(CURLOPT_XFERINFOFUNCTION,
               static_cast<curl_xferinfo_callback>(&HttpTransfer::OnProgress));
    m_curl.Set(CURLOPT_XFERINFODATA, static_cast<const void*>(this));
    // Through a proxy every connection is made to it; its address is the configuration's.
    if (m_settings.hosts && !m_hasProxy) {
        m_curl.Set(CURLOPT_OPENSOCKETFUNCTION,
                   static_cast<curl_opensocket_callback>(&HttpTransfer::OnOpenSocket));
        m_curl.Set(CURLOPT_OPENSOCKETDATA, static_cast<const void*>(this));
    }
}

std::size_t HttpTransfer::OnBody(char* data, std::size_t size, std::size_t count,
                                 void* user) noexcept {
    HttpTransfer& self = *static_cast<HttpTransfer*>(user);
    const std::size_t octets = size * count;  // size is always 1
    try {
        if (self.m_body.Append(data, octets, self.m_curl.AnnouncedLength())) {
            return octets;
        }
    } catch (const std::bad_alloc&) {
        self.m_outOfMemory = true;
    }
    return octets + 1;  // any other number than the octets given ends the transfer
}

std::size_t HttpTransfer::OnHeader(char* data, std::size_t size, std::size_t count,
                                   void* user) noexcept {
    HttpTransfer& self = *static_cast<HttpTransfer*>(user);
    const std::string_view line(data, size * count);
    self.m_isHeaderComplete = line == "\r\n" || line == "\n";
    // The library keeps the lines; not every release of it bounds their number.
    self.m_headerSize += line.size();
    return self.m_headerSize <= kMaxHeader ? line.size() : 0;
}

int HttpTransfer::OnProgress(void* user, curl_off_t, curl_off_t downloaded, curl_off_t,
                             curl_off_t uploaded) {
    HttpTransfer& self = *static_cast<HttpTransfer*>(user);
    const Clock::time_point now = Clock::now();
    if (now - self.m_lastProgress < std::chrono::milliseconds(self.m_settings.progressIntervalMs)) {
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
void HttpTransfer::LogProgress(curl_off_t downloaded, curl_off_t uploaded) {
    const curl_off_t left = static_cast<curl_off_t>(m_sendSize) - uploaded;
    if (left > 0 && downloaded == 0) {
        LogMessage(kMsgHttpSending, {ca::DecimalText(left), m_url.display}, /*isError=*/false);
    } else if (downloaded > 0) {
        LogMessage(kMsgHttpSent, {ca::DecimalText(downloaded)}, /*isError=*/false);
    }
}

// The last check before a connection, which is made for one of the addresses that the name look-up
// gave: what it is made to is what is checked.
curl_socket_t HttpTransfer::OnOpenSocket(void* user, curlsocktype,
                                         curl_sockaddr* address) noexcept {
    HttpTransfer& self = *static_cast<HttpTransfer*>(user);
    try {
        const std::optional<IpAddress> peer = IpAddress::FromSocket(address->addr);
        if (!peer || !self.m_settings.hosts->AllowsAt(self.m_url.host, *peer)) {
            self.m_forbidden = peer;
            return CURL_SOCKET_BAD;
        }
    } catch (const std::bad_alloc&) {
        self.m_outOfMemory = true;
        return CURL_SOCKET_BAD;
    }
    self.m_hasSocket = true;
    // A program that the host starts meanwhile must not inherit the connection.
    return ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
}

std::string HttpTransfer::Run(const HttpUrl& url, Clock::time_point end) {
    m_url = url;
    if (m_settings.hosts) {
        const HostRules& rules = *m_settings.hosts;
        if (!(m_hasProxy ? rules.Allows(url.host) : rules.MightAllow(url.host))) {
            Forbid();
        }
    }
    if (m_isPost && m_curl.Status() == kStatusSeeOther) {
        m_curl.Set(CURLOPT_HTTPGET, 1L);
        m_isPost = false;
        m_sendSize = 0;
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    // 0 would mean no limit at all.
    m_curl.Set(CURLOPT_TIMEOUT_MS, std::max(1L, static_cast<long>(left.count())));
    m_curl.Set(CURLOPT_URL, url.text);
    m_body.Clear();
    m_isHeaderComplete = false;
    m_hasSocket = false;
    m_forbidden.reset();
    LogMessage(kMsgHttpSending, {ca::DecimalText(m_sendSize), url.display}, /*isError=*/false);
    Judge(m_curl.Perform());
    std::string location = IsSuccess(m_curl.Status()) ? std::string() : m_curl.RedirectUrl();
    if (location.empty()) {
        LogMessage(kMsgHttpSent, {ca::DecimalText(m_body.Size())}, /*isError=*/false);
    }
    return location;
}

void HttpTransfer::RefuseRedirect(int code) const {
    const std::wstring status = ca::DecimalText(m_curl.Status());
    LogMessage(kMsgHttpRequestError, {status, ca::DecimalText(code)}, /*isError=*/true);
    throw ReportedException(kErrServer, L"HTTP " + status);
}

// Logs and throws that the host of the running request is not allowed.
void HttpTransfer::Forbid(const std::string& address) const {
    const std::string shown = address.empty() ? m_url.host : m_url.host + " (" + address + ')';
    const std::wstring text = FillMessage(SetZORNAMessage(kMsgHttpForbidden), {u8u16(shown)});
    LogEvent(text.c_str(), /*isError=*/true);
    throw HostForbidden(kErrParameters, text);
}

// Whether the server was not even reached. A plain request's other statuses do not tell who sent
// them.
bool HttpTransfer::IsProxyRefusal(long status) const {
    const long tunnel = m_curl.TunnelStatus();
    const bool hasNoTunnel = tunnel != 0 && !IsSuccess(tunnel);
    return m_hasProxy && (hasNoTunnel || status == kStatusProxyRefuses);
}

// Logs and throws what went wrong; the exception's message is the detail.
void HttpTransfer::Judge(int code) {
    if (code == CURLE_OK && !m_isHeaderComplete) {
        // The library takes an answer that breaks off in its header for one without a body.
        code = CURLE_PARTIAL_FILE;
    }
    if (code == CURLE_OUT_OF_MEMORY && !m_outOfMemory && !m_isHeaderComplete && m_curl.IsSent()) {
        // So the library reports a header line that is longer than its limit.
        code = CURLE_WEIRD_SERVER_REPLY;
    }
    if (code == CURLE_COULDNT_CONNECT && m_forbidden && !m_hasSocket) {
        Forbid(m_forbidden->Text());
    }
    const long status = m_curl.Status();
    const bool isRefused = !IsSuccess(status) && m_curl.RedirectUrl().empty();
    if (code == CURLE_HTTP_RETURNED_ERROR || (code == CURLE_OK && isRefused)) {
        LogMessage(kMsgHttpRequestError, {ca::DecimalText(status), ca::DecimalText(code)},
                   /*isError=*/true);
        throw ReportedException(IsProxyRefusal(status) ? kErrConnection : kErrServer,
                                L"HTTP " + ca::DecimalText(status));
    }
    if (code != CURLE_OK) {
        LogMessage(kMsgHttpNotSent, {ca::DecimalText(code)}, /*isError=*/true);
        if (m_outOfMemory || code == CURLE_OUT_OF_MEMORY) {
            throw std::bad_alloc();
        }
        std::wstring detail = u8u16(m_curl.ErrorText(code));
        MakePrintable(detail);  // it may quote the server
        LogEvent(detail.c_str(), /*isError=*/true);
        throw ReportedException(TransferError(code), detail);
    }
}

}  // namespace ca
