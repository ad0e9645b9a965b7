#include "common/IpAddress.h"

#include <algorithm>
#include <arpa/inet.h>
#include <charconv>
#include <cstring>
#include <netinet/in.h>
#include <sys/socket.h>

namespace ca {
namespace {

constexpr unsigned kV4Bits = 32;
constexpr unsigned kMappedBits = 96;
// Prefixes after which an IPv4 address stands: of translators (RFC 6052, 2.1) and of 6to4 (RFC
// 3056, 2).
constexpr const char* kTranslated[] = {"64:ff9b::/96", "2002::/16"};

std::optional<unsigned> ParseNumber(const std::string& text) {
    unsigned value = 0;
    const char* const end = text.data() + text.size();
    const auto [stopped, fault] = std::from_chars(text.data(), end, value);
    return fault == std::errc() && stopped == end ? std::optional(value) : std::nullopt;
}

}  // namespace

IpAddress::IpAddress(bool isV4, const void* octets)
    : m_size(isV4 ? kV4Size : kV6Size), m_bits(static_cast<unsigned>(m_size * 8)) {
    std::memcpy(m_octets.data(), octets, m_size);
}

std::optional<IpAddress> IpAddress::ParsePlain(const std::string& text) {
    std::uint8_t octets[kV6Size];
    for (const bool isV4 : {true, false}) {
        if (::inet_pton(isV4 ? AF_INET : AF_INET6, text.c_str(), octets) == 1) {
            return IpAddress(isV4, octets);
        }
    }
    return std::nullopt;
}

std::optional<IpAddress> IpAddress::Parse(const std::string& text) {
    const std::size_t slash = text.find('/');
    // An address without a prefix length is a network of one.
    std::optional<IpAddress> address = ParsePlain(text.substr(0, slash));
    if (address && slash != std::string::npos) {
        const std::optional<unsigned> bits = ParseNumber(text.substr(slash + 1));
        if (!bits || *bits > address->m_bits) {
            return std::nullopt;
        }
        address->m_bits = *bits;
    }
    if (address) {
        // In one form, so that a rule for an IPv4 network meets both spellings of its addresses.
        address->Unmap();
    }
    return address;
}

std::optional<IpAddress> IpAddress::ParseAnySpelling(const std::string& text) {
    in_addr v4{};
    // As the C library's resolver reads it: octal, hexadecimal and short forms reach the same host.
    if (::inet_aton(text.c_str(), &v4) != 0) {
        return IpAddress(/*isV4=*/true, &v4);
    }
    // A zone names an interface of this machine, not another address.
    std::optional<IpAddress> address = ParsePlain(text.substr(0, text.find('%')));
    if (address) {
        address->Unmap();
    }
    return address;
}

std::optional<IpAddress> IpAddress::FromSocket(const sockaddr& address) {
    if (address.sa_family == AF_INET) {
        return IpAddress(/*isV4=*/true, &reinterpret_cast<const sockaddr_in&>(address).sin_addr);
    }
    if (address.sa_family != AF_INET6) {
        return std::nullopt;
    }
    IpAddress result(/*isV4=*/false, &reinterpret_cast<const sockaddr_in6&>(address).sin6_addr);
    result.Unmap();
    return result;
}

std::vector<IpAddress> IpAddress::Forms() const {
    // A rule that forbids a network must forbid every way to reach it.
    std::vector<IpAddress> forms = {*this};
    for (const char* text : kTranslated) {
        const IpAddress prefix = *Parse(text);
        if (IsBehind(prefix)) {
            forms.push_back(Embedded(prefix.m_bits));
        }
    }
    return forms;
}

bool IpAddress::Contains(const IpAddress& address) const {
    return address.IsBehind(*this);
}

bool IpAddress::IsBehind(const IpAddress& prefix) const {
    if (m_size != prefix.m_size || m_bits < prefix.m_bits) {
        return false;
    }
    const std::size_t whole = prefix.m_bits / 8;
    const unsigned rest = prefix.m_bits % 8;
    return std::equal(m_octets.begin(), m_octets.begin() + static_cast<std::ptrdiff_t>(whole),
                      prefix.m_octets.begin()) &&
           (rest == 0 || ((m_octets[whole] ^ prefix.m_octets[whole]) >> (8 - rest)) == 0);
}

// The IPv4 address or network after so many bits.
IpAddress IpAddress::Embedded(unsigned bits) const {
    IpAddress inner(/*isV4=*/true, m_octets.data() + bits / 8);
    inner.m_bits = std::min(kV4Bits, m_bits - bits);
    return inner;
}

void IpAddress::Unmap() {
    if (!IsV4()) {
        IpAddress prefix = *ParsePlain("::ffff:0:0");
        // ::ffff:0:0/96 (RFC 4291, 2.5.5.2).
        prefix.m_bits = kMappedBits;
        if (IsBehind(prefix)) {
            *this = Embedded(prefix.m_bits);
        }
    }
}

std::string IpAddress::Text() const {
    char text[INET6_ADDRSTRLEN] = "";
    ::inet_ntop(IsV4() ? AF_INET : AF_INET6, m_octets.data(), text, sizeof(text));
    return text;
}

}  // namespace ca
