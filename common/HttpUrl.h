#pragma once

#include <cstddef>
#include <string>

namespace ca {

/// Characters of a URL that are accepted; RFC 9110 4.1 asks for 8000 octets at least.
inline constexpr std::size_t kMaxUrlLength = 8192;

/// An address that has passed the checks.
struct HttpUrl {
    std::string text;      ///< what is requested: ASCII, host in its IDNA form, no fragment
    std::wstring display;  ///< for log lines: no user information, no query, no fragment
    bool isSecure;         ///< https
};

/// Checks and splits an absolute http or https URL (RFC 3986). Characters outside ASCII and those a
/// URL may not hold are percent-encoded.
/// Throws ca::Exception 16268 for another scheme, no host, a port out of range, more than
/// kMaxUrlLength characters, blanks, backslashes or control characters.
HttpUrl ParseHttpUrl(const std::wstring& url);

/// The ASCII form of a host name or address; an IPv6 address comes in brackets.
/// Throws ca::Exception 16268 when it is none.
std::string ParseHost(const std::wstring& host);

}  // namespace ca
