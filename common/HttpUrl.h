#pragma once

#include <cstddef>
#include <string>

namespace ca {

/// Characters of a URL that are accepted; RFC 9110, 4.1 asks for 8000 octets at least.
inline constexpr std::size_t kMaxUrlLength = 8192;

/// An address that has passed the checks.
struct HttpUrl {
    std::string text;       ///< what is requested: ASCII, host in its IDNA form, no fragment
    std::wstring display;   ///< for log lines: no user information, no query, no fragment
    std::string host;       ///< in lower case, IDNA; an IPv6 address without brackets
    bool isSecure = false;  ///< https
};

/// Checks and splits an absolute http or https URL (RFC 3986). Characters outside ASCII and those a
/// URL may not hold are percent-encoded.
/// Throws ca::Exception 16268 for another scheme, no host, a port out of range, more than
/// kMaxUrlLength characters, blanks, backslashes or control characters.
HttpUrl ParseHttpUrl(const std::wstring& url);

/// Where an answer of `from` sends the client to. User information stays with its server.
/// \param location  an absolute URL.
/// Throws what ParseHttpUrl() throws, and 16268 for http after https.
HttpUrl FollowRedirect(const HttpUrl& from, const std::wstring& location);

/// The ASCII form of a host name or address; an IPv6 address comes in brackets.
/// Throws ca::Exception 16268 when it is not one.
std::string ParseHost(const std::wstring& host);

}  // namespace ca
