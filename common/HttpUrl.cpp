#include "common/HttpUrl.h"

#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"

#include <QtCore/QUrl>

#include <algorithm>

namespace ca {
namespace {

constexpr int kHttpPort = 80;
constexpr int kHttpsPort = 443;

// A backslash is read as a slash by some parsers and as part of the user information by others;
// what is checked must be what is requested, so it is refused with the blanks and controls.
bool IsForbidden(wchar_t c) {
    const auto code = static_cast<char32_t>(c);
    const bool control = code <= 0x20 || (code >= 0x7F && code <= 0xA0);
    const bool noCharacter = (code >= 0xD800 && code <= 0xDFFF) || code > 0x10FFFF;
    return control || noCharacter || c == L'\\';
}

bool IsText(const std::wstring& text) {
    return !text.empty() && text.size() <= kMaxUrlLength && std::ranges::none_of(text, IsForbidden);
}

// The address itself is not repeated: what is not a URL may be anything.
[[noreturn]] void RefuseUrl() {
    throw Exception(kErrParameters, SetZORNAMessage(kMsgNotHttp));
}
[[noreturn]] void RefuseHost() {
    throw Exception(kErrParameters, L"ProxyAddress");
}

QUrl ParseUrl(const std::wstring& url) {
    if (!IsText(url)) {
        RefuseUrl();
    }
    QUrl parsed;  // its own constructor with a text leaks when memory is short
    parsed.setUrl(QString::fromStdWString(url), QUrl::TolerantMode);
    return parsed;
}

HttpUrl CheckUrl(QUrl parsed) {
    const bool isSecure = parsed.scheme() == QLatin1String("https");
    const bool isHttp = isSecure || parsed.scheme() == QLatin1String("http");
    if (!parsed.isValid() || !isHttp || parsed.host().isEmpty() || parsed.port(1) == 0) {
        RefuseUrl();
    }
    HttpUrl result{parsed.toEncoded(QUrl::RemoveFragment).toStdString(),
                   {},
                   parsed.host(QUrl::FullyEncoded).toStdString(),
                   isSecure};
    const bool hasQuery = parsed.hasQuery();
    parsed.setQuery(QString());
    parsed.setFragment(QString());
    parsed.setUserInfo(QString());
    result.display = parsed.toString(QUrl::FullyEncoded).toStdWString();
    if (hasQuery) {
        result.display += L"?...";
    }
    return result;
}

}  // namespace

HttpUrl ParseHttpUrl(const std::wstring& url) {
    return CheckUrl(ParseUrl(url));
}

HttpUrl FollowRedirect(const HttpUrl& from, const std::wstring& location) {
    const QUrl before = QUrl::fromEncoded(QByteArray::fromStdString(from.text));
    QUrl next = ParseUrl(location);
    const int port = from.isSecure ? kHttpsPort : kHttpPort;
    const bool isSameServer = next.scheme() == before.scheme() && next.host() == before.host() &&
                              next.port(port) == before.port(port);
    // Credentials go on to the server that they were given for, and to no other.
    if (isSameServer && next.userInfo().isEmpty()) {
        next.setUserInfo(before.userInfo(QUrl::FullyEncoded));
    }
    HttpUrl checked = CheckUrl(next);
    // What was asked for over TLS is not fetched in the clear.
    if (from.isSecure && !checked.isSecure) {
        throw Exception(kErrParameters);
    }
    return checked;
}

std::string ParseHost(const std::wstring& host) {
    if (!IsText(host)) {
        RefuseHost();
    }
    QUrl url;
    url.setHost(QString::fromStdWString(host));
    std::string ascii = url.host(QUrl::FullyEncoded).toStdString();
    if (ascii.empty()) {
        RefuseHost();
    }
    return ascii.find(':') == std::string::npos ? ascii : '[' + ascii + ']';
}

}  // namespace ca
