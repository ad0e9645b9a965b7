#include "common/HostRules.h"

#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/HttpUrl.h"

#include <algorithm>

namespace ca {
namespace {

// What "@internal" stands for: the names of this machine (RFC 6761, 6.3), and the addresses that do
// not belong to the public network (the registries of RFC 6890; RFC 4291, 2.4, RFC 3879).
// clang-format off
constexpr const char* kInternal[] = {
    "localhost",      "*.localhost",    "0.0.0.0/8",     "10.0.0.0/8",   "100.64.0.0/10",
    "127.0.0.0/8",    "169.254.0.0/16", "172.16.0.0/12", "192.0.0.0/24", "192.168.0.0/16",
    "198.18.0.0/15",  "224.0.0.0/4",    "240.0.0.0/4",   "::/96",        "64:ff9b:1::/48",
    "100::/64",       "fc00::/7",       "fe80::/10",     "fec0::/10",    "ff00::/8",
};
// clang-format on

std::string WithoutFinalDot(std::string host) {
    if (host.ends_with('.')) {
        host.pop_back();
    }
    return host;
}

// Letters, digits, hyphens and underscores between dots.
bool IsHostName(const std::string& name) {
    char before = '.';
    for (const char c : name) {
        const bool isRight = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' ||
                             c == '_' || (c == '.' && before != '.');
        if (!isRight) {
            return false;
        }
        before = c;
    }
    return before != '.';
}

}  // namespace

HostRules::HostRules(const std::vector<std::wstring>& patterns) {
    for (const std::wstring& text : patterns) {
        Add(text);
    }
}

bool HostRules::IsPattern(const std::wstring& text) {
    try {
        HostRules().Add(text);
        return true;
    } catch (const Exception&) {
        return false;
    }
}

void HostRules::Add(std::wstring_view text) {
    const bool denies = text.starts_with(L'!');
    const std::wstring_view what = text.substr(denies ? 1 : 0);
    if (what.find(L'\0') != std::wstring_view::npos) {
        throw Exception(kErrParameters);  // what is converted would end there
    }
    if (what != L"@internal") {
        m_patterns.push_back(Parse(u16u8(std::wstring(what)), denies));
        return;
    }
    for (const char* each : kInternal) {
        m_patterns.push_back(Parse(each, denies));
    }
}

// Any pattern but a set of them, in UTF-8.
HostRules::Pattern HostRules::Parse(const std::string& text, bool denies) {
    if (text == "*") {
        return {denies, text, std::nullopt};
    }
    if (auto network = IpAddress::Parse(text)) {
        return {denies, {}, network};
    }
    const bool isBelow = text.starts_with("*.");
    // As a URL's host is spelt: in lower case, IDNA.
    const std::string name = WithoutFinalDot(ParseHost(u8u16(text.substr(isBelow ? 2 : 0))));
    if (!IsHostName(name) || IpAddress::ParseAnySpelling(name)) {
        throw Exception(kErrParameters);
    }
    return {denies, (isBelow ? "." : "") + name, std::nullopt};
}

bool HostRules::Matches(const Pattern& pattern, const std::string& name,
                        const std::vector<IpAddress>& addresses) {
    if (pattern.network) {
        return std::ranges::any_of(addresses, [&](const IpAddress& address) {
            return pattern.network->Contains(address);
        });
    }
    const bool isBelow = pattern.name.starts_with('.');
    return pattern.name == "*" ||
           (isBelow ? name.size() > pattern.name.size() && name.ends_with(pattern.name)
                    : name == pattern.name);
}

// \param peer  what is connected to; none as long as it is not known.
HostRules::Verdict HostRules::Judge(const std::string& host,
                                    const std::optional<IpAddress>& peer) const {
    std::string name = WithoutFinalDot(host);
    const std::optional<IpAddress> literal = IpAddress::ParseAnySpelling(name);
    std::vector<IpAddress> addresses;
    if (literal || peer) {
        addresses = (peer ? peer : literal)->Forms();
    }
    if (literal) {
        name.clear();  // an address, however spelt, has no name
    }
    Verdict verdict = Verdict::kNothingSaid;
    for (const Pattern& pattern : m_patterns) {
        if (Matches(pattern, name, addresses)) {
            // A denial holds wherever it stands: the order of a list is of no account.
            if (pattern.denies) {
                return Verdict::kDenied;
            }
            verdict = Verdict::kAllowed;
        }
    }
    return verdict;
}

bool HostRules::Allows(const std::string& host) const {
    return Judge(host, std::nullopt) == Verdict::kAllowed;
}

bool HostRules::MightAllow(const std::string& host) const {
    const Verdict verdict = Judge(host, std::nullopt);
    // A name that no pattern knows is looked up only where its address could be allowed then.
    return verdict == Verdict::kAllowed ||
           (verdict == Verdict::kNothingSaid &&
            !IpAddress::ParseAnySpelling(WithoutFinalDot(host)) &&
            std::ranges::any_of(m_patterns, [](const Pattern& each) {
                return !each.denies && each.network.has_value();
            }));
}

bool HostRules::AllowsAt(const std::string& host, const IpAddress& address) const {
    return Judge(host, address) == Verdict::kAllowed;
}

}  // namespace ca
