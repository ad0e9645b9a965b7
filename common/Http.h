#pragma once

#include "common/HeapPtr.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace ca {

class ConfigFileParser;
class HostRules;

/// What ConfigFileParser's "ProxyType" numbers stand for.
enum class ProxyType : std::uint8_t {
    kHttp = 0,     ///< CONNECT for https, absolute request targets for http
    kSocks4 = 1,   ///< names are resolved here
    kSocks4a = 2,  ///< names are resolved by the proxy
    kSocks5 = 3,   ///< names are resolved by the proxy
};

/// How a transfer runs. Texts are used as they are; no environment variable is consulted.
struct HttpSettings {
    std::wstring proxyAddress;  ///< host name or address without scheme; empty: no proxy
    std::uint16_t proxyPort = 80;
    ProxyType proxyType = ProxyType::kHttp;
    std::wstring proxyLogin;  ///< empty: no authentication at the proxy
    std::wstring proxyPassword;

    // Milliseconds. 0 or more than kMaxTimeoutMs stands for kMaxTimeoutMs: no transfer is endless.
    std::uint32_t connectTimeoutMs = 10000;  ///< name look-up, connection and TLS handshake
    std::uint32_t totalTimeoutMs = 30000;    ///< the whole transfer, redirects included

    /// A transfer that moves fewer octets a second than this, for that long, is given up.
    std::uint32_t lowSpeedBytesPerSecond = 1;
    std::uint32_t lowSpeedSeconds = 20;

    std::uint32_t maxBodySize = 64U << 20;    ///< octets of an answer's body that are accepted
    std::uint32_t progressIntervalMs = 5000;  ///< between two log lines of a running transfer

    std::wstring caFile;  ///< PEM file of trusted roots; empty: the library's own
    std::wstring caPath;  ///< directory of hashed roots; empty: the library's own
    std::wstring userAgent = L"mod_foo/1.0";

    std::shared_ptr<const HostRules> hosts;  ///< which hosts may be asked; null: all

    static constexpr std::uint32_t kMaxTimeoutMs = 3600U * 1000U;
    /// What a time-out stands for.
    static std::uint32_t BoundedTimeout(std::uint32_t milliseconds);

    /// The proxy and the general time-out of the service configuration.
    static HttpSettings FromConfig(const ConfigFileParser& config);
};

/// How the transfers of requests run.
struct TransferSettings {
    HttpSettings fetch;   ///< of "fileDataUrl"
    HttpSettings upload;  ///< to "uploadUrl"
};

/// Transfers through the libcurl that is loaded at run time (common/CurlLibrary.h).
///
/// http and https only, redirects included (five at most, none from https back to http); server
/// certificates and names are always checked, TLS 1.2 at least. A URL may carry user information,
/// which is sent to that host only. Log lines (messages 902 to 906) show a URL without user
/// information, query and fragment. Safe from any thread; each call ends within its time-out.
namespace Http {

/// Fetches `url`. An empty body is a success with length 0.
/// \param out        replaced on success only; the body in a malloc buffer, never null then.
/// \param outLength  octets in `out`.
/// Throws ca::Exception: 16268 for a URL or setting that is refused before anything is sent, and
/// for a host, of a redirect too, that `hosts` does not allow; 16302 without libcurl, 16263 for no
/// connection, a broken one, a proxy that refuses, a time-out or a TLS failure, 16264 for a status
/// outside 200 to 299, a redirect that is not followed, an answer that is not HTTP or a body larger
/// than `maxBodySize`, 16197 when out of memory.
void GetBlob(const std::wstring& url, const HttpSettings& settings, BytePtr& out,
             unsigned& outLength);

/// Sends `body` to `url` by POST as application/octet-stream; what the server answers is dropped.
/// \param timeoutMs  takes the place of `settings.totalTimeoutMs`.
/// Throws ca::Exception: 16302 without libcurl, 16268 for a host that `hosts` does not allow; for
/// everything else 16305, whose message is the code's text followed by what went wrong.
void Upload(const std::wstring& url, std::span<const unsigned char> body,
            const HttpSettings& settings, std::uint32_t timeoutMs);

/// Sends `question` to `url` by POST and fetches the answer: how responders (RFC 6960, A.1) and
/// time-stamp servers (RFC 3161, 3.4) are asked.
/// \param contentType  of the question, as "application/ocsp-request".
/// The others, and what is thrown, as with GetBlob().
void Ask(const std::wstring& url, const char* contentType, std::span<const unsigned char> question,
         const HttpSettings& settings, BytePtr& out, unsigned& outLength);

}  // namespace Http
}  // namespace ca
