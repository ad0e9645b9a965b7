#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

// The content octets of an INTEGER or ENUMERATED: two's complement, most significant octet first
// (X.690, 8.3).

namespace ca {

constexpr bool IsNegativeInteger(std::span<const unsigned char> content) noexcept {
    return !content.empty() && (content[0] & 0x80U) != 0;
}

/// The number; none for no octets and for more than eight.
constexpr std::optional<std::int64_t> ReadInteger(std::span<const unsigned char> content) noexcept {
    if (content.empty() || content.size() > sizeof(std::int64_t)) {
        return std::nullopt;
    }
    // The sign fills what stands before the first octet.
    std::uint64_t value = IsNegativeInteger(content) ? ~std::uint64_t{0} : 0;
    for (const unsigned char octet : content) {
        value = value << 8U | octet;
    }
    return static_cast<std::int64_t>(value);
}

/// Octets as a number without a sign; none for more than four. No octets are 0.
constexpr std::optional<std::uint32_t> ReadUnsigned(
    std::span<const unsigned char> octets) noexcept {
    if (octets.size() > sizeof(std::uint32_t)) {
        return std::nullopt;
    }
    std::uint32_t value = 0;
    for (const unsigned char octet : octets) {
        value = value << 8U | octet;
    }
    return value;
}

/// Without the octets that only repeat the sign; the shortest form of the same number.
constexpr std::span<const unsigned char> WithoutSignOctets(
    std::span<const unsigned char> content) noexcept {
    const auto repeatsSign = [](std::span<const unsigned char> octets) {
        return octets[0] == (IsNegativeInteger(octets.subspan(1)) ? 0xFF : 0x00);
    };
    while (content.size() > 1 && repeatsSign(content)) {
        content = content.subspan(1);
    }
    return content;
}

/// Makes the negative of a number in as many octets.
constexpr void NegateInteger(std::span<unsigned char> content) noexcept {
    bool isLow = true;
    for (std::size_t i = content.size(); i-- > 0;) {
        content[i] = static_cast<unsigned char>(isLow ? -content[i] : ~content[i]);
        isLow = isLow && content[i] == 0;
    }
}

}  // namespace ca
