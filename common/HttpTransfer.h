#pragma once

#include "common/CurlLibrary.h"
#include "common/Exception.h"
#include "common/Http.h"
#include "common/HttpBody.h"
#include "common/HttpUrl.h"
#include "common/IpAddress.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace ca {

/// 16268 for a host that HttpSettings::hosts does not allow.
struct HostForbidden : ReportedException {
    using ReportedException::ReportedException;
};

/// Requests to one server after another, as redirects lead, over one handle of the library. Every
/// one is checked and logged by itself: the library follows no redirect.
class HttpTransfer {
  public:
    using Clock = std::chrono::steady_clock;

    /// Settings and body must outlive the transfer.
    /// Throws ca::Exception 16268 for a setting that is refused, 16302 without libcurl.
    HttpTransfer(const HttpSettings& settings, HttpBody& answer);
    HttpTransfer(const HttpTransfer&) = delete;  // the library's callbacks hold the address
    HttpTransfer& operator=(const HttpTransfer&) = delete;
    ~HttpTransfer() = default;

    /// Makes the requests POSTs. The octets are not copied: they must outlive the transfer.
    /// \param contentType  the media type, a literal.
    void SetPostBody(std::span<const unsigned char> body, const char* contentType);

    /// Sends one request and takes its answer, which is left in the body.
    /// \param end  when the request is given up.
    /// \return where a redirect leads to, an absolute URL; empty when the answer is the last.
    /// Throws what Http::GetBlob() throws once it has a URL, HostForbidden before anything is sent
    /// to such a host, std::bad_alloc. All are logged.
    std::string Run(const HttpUrl& url, Clock::time_point end);

    /// Logs the last answer as a redirect that is not followed, for the reason of a CurlCode, and
    /// throws 16264.
    [[noreturn]] void RefuseRedirect(int code) const;

  private:
    void SetSafety();
    void SetLimits();
    void SetTrust();
    void SetProxy();
    void SetCallbacks();
    void Judge(int code);
    bool IsProxyRefusal(long status) const;
    [[noreturn]] void Forbid(const std::string& address = {}) const;

    static std::size_t OnBody(char* data, std::size_t size, std::size_t count, void* user) noexcept;
    static std::size_t OnHeader(char* data, std::size_t size, std::size_t count,
                                void* user) noexcept;
    static int OnProgress(void* user, curl_off_t downloadTotal, curl_off_t downloaded,
                          curl_off_t uploadTotal, curl_off_t uploaded);
    static curl_socket_t OnOpenSocket(void* user, curlsocktype purpose,
                                      curl_sockaddr* address) noexcept;
    void LogProgress(curl_off_t downloaded, curl_off_t uploaded);

    const HttpSettings& m_settings;
    HttpBody& m_body;
    CurlEasy m_curl;
    HttpUrl m_url;  // of the request that runs
    Clock::time_point m_lastProgress = Clock::now();
    std::size_t m_sendSize = 0;
    std::size_t m_headerSize = 0;
    bool m_isPost = false;
    bool m_hasProxy = false;
    bool m_isHeaderComplete = false;       // of the answer that came last
    bool m_outOfMemory = false;            // in a callback, where nothing may be thrown
    bool m_hasSocket = false;              // of this request, or one that is used again
    std::optional<IpAddress> m_forbidden;  // the last address that was not connected to
};

}  // namespace ca
