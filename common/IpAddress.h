#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct sockaddr;

namespace ca {

/// An IPv4 or IPv6 address, or a network of them. An IPv4 address that is mapped into IPv6
/// (RFC 4291, 2.5.5.2) is the IPv4 address: systems connect to that.
class IpAddress {
  public:
    /// Dotted decimal or IPv6 text, with "/" and a prefix's bits for a network.
    static std::optional<IpAddress> Parse(const std::string& text);
    /// An address in any spelling that name look-ups take: also 0x7f.1, 2130706433, 0177.0.0.1,
    /// and with an IPv6 zone.
    static std::optional<IpAddress> ParseAnySpelling(const std::string& text);
    /// None for other families.
    static std::optional<IpAddress> FromSocket(const sockaddr& address);

    /// The address itself, and an IPv4 address in it that packets may end up at: after the
    /// prefixes of translators (RFC 6052, 2.1) and of 6to4 (RFC 3056, 2).
    std::vector<IpAddress> Forms() const;
    /// Whether the address is one of this network. Networks of one kind hold none of the other.
    bool Contains(const IpAddress& address) const;
    /// In the usual spelling.
    std::string Text() const;

  private:
    IpAddress(bool isV4, const void* octets);
    static std::optional<IpAddress> ParsePlain(const std::string& text);
    bool IsV4() const { return m_size == kV4Size; }
    bool IsBehind(const IpAddress& prefix) const;
    IpAddress Embedded(unsigned bits) const;
    void Unmap();

    static constexpr std::size_t kV4Size = 4;
    static constexpr std::size_t kV6Size = 16;

    std::array<std::uint8_t, kV6Size> m_octets{};
    std::size_t m_size;  // octets that count
    unsigned m_bits;     // of the prefix; of a single address all
};

}  // namespace ca
