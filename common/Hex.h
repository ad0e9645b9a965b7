#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

// Hexadecimal digits, for narrow and wide texts alike.

namespace ca {

inline constexpr std::string_view kLowerHexDigits = "0123456789abcdef";
inline constexpr std::string_view kUpperHexDigits = "0123456789ABCDEF";

/// The digit of the four lowest bits.
constexpr char HexDigit(std::size_t bits, std::string_view digits = kLowerHexDigits) noexcept {
    return digits[bits & 0xF];
}

/// Whether a character is a hexadecimal digit, in either case.
template <class Char>
constexpr bool IsHexDigit(Char c) noexcept {
    return (c >= Char('0') && c <= Char('9')) || (c >= Char('a') && c <= Char('f')) ||
           (c >= Char('A') && c <= Char('F'));
}

/// The digits of four octets, which stand in the order of memory in a number of this machine.
constexpr std::array<char, 8> HexOf4(std::span<const unsigned char, 4> octets,
                                     std::string_view digits) noexcept {
    static_assert(std::endian::native == std::endian::little);
    constexpr std::uint64_t kEach = 0x0101010101010101;
    constexpr std::uint64_t kLow = 0x000F000F000F000F;
    std::uint64_t wide = 0;  // an octet in the lower half of each 16 bits
    for (std::size_t i = 0; i < octets.size(); ++i) {
        wide |= std::uint64_t{octets[i]} << (16 * i);
    }
    const std::uint64_t nibbles = (wide >> 4 & kLow) | (wide & kLow) << 8;
    const std::uint64_t letters = (nibbles + kEach * 6) >> 4 & kEach;  // 1 from 10 on
    const auto beyondDigits = static_cast<std::uint64_t>(digits[10] - '0' - 10);
    return std::bit_cast<std::array<char, 8>>(nibbles + kEach * '0' + letters * beyondDigits);
}

/// Writes two digits an octet, `separator` between the octets unless it is NUL; returns the end.
template <class Char>
constexpr Char* WriteHex(std::span<const unsigned char> octets, Char* out,
                         std::string_view digits = kLowerHexDigits, char separator = 0) noexcept {
    for (; separator == 0 && octets.size() >= 4; octets = octets.subspan(4)) {
        out = std::ranges::copy(HexOf4(octets.first<4>(), digits), out).out;
    }
    bool isFirst = true;
    for (const unsigned char octet : octets) {
        if (separator != 0 && !isFirst) {
            *out++ = static_cast<Char>(separator);
        }
        isFirst = false;
        *out++ = static_cast<Char>(HexDigit(octet >> 4U, digits));
        *out++ = static_cast<Char>(HexDigit(octet, digits));
    }
    return out;
}

/// Appends what WriteHex() writes.
template <class Text>
void AddHex(std::span<const unsigned char> octets, Text& out,
            std::string_view digits = kLowerHexDigits, char separator = 0) {
    if (octets.empty()) {
        return;
    }
    const std::size_t start = out.size();
    out.resize(start + octets.size() * (separator != 0 ? 3 : 2) - (separator != 0 ? 1 : 0));
    WriteHex(octets, out.data() + start, digits, separator);
}

}  // namespace ca
