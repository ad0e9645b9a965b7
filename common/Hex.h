#pragma once

#include <cstddef>
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

/// Writes two digits an octet, `separator` between the octets unless it is NUL; returns the end.
template <class Char>
constexpr Char* WriteHex(std::span<const unsigned char> octets, Char* out,
                         std::string_view digits = kLowerHexDigits, char separator = 0) noexcept {
    bool isFirst = true;
    for (const unsigned char octet : octets) {
        if (separator != 0 && !isFirst) {
            *out++ = static_cast<Char>(separator);
        }
        isFirst = false;
        *out++ = static_cast<Char>(digits[octet >> 4U]);
        *out++ = static_cast<Char>(digits[octet & 0xFU]);
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
