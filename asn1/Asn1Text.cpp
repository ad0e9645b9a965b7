#include "asn1/Asn1Text.h"

#include "asn1/Asn1Primitives.h"

#include <charconv>

namespace ca {

void AppendHex(std::span<const unsigned char> octets, unsigned flags, std::string& out) {
    if ((flags & CAsn1Integer::kSkipLeadingZero) != 0 && !octets.empty() && octets[0] == 0) {
        octets = octets.subspan(1);
    }
    const char* digits =
        (flags & CAsn1Integer::kUpperCase) != 0 ? "0123456789ABCDEF" : "0123456789abcdef";
    const bool colons = (flags & CAsn1Integer::kColons) != 0;
    const std::size_t before = out.size();
    out.resize(before + octets.size() * (colons ? 3 : 2));
    char* next = out.data() + before;
    for (const unsigned char octet : octets) {
        *next++ = digits[octet >> 4];
        *next++ = digits[octet & 0xF];
        if (colons) {
            *next++ = ':';
        }
    }
    if (colons && !octets.empty()) {
        out.pop_back();
    }
}

void AppendInteger(std::span<const unsigned char> octets, unsigned flags, std::string& out) {
    if (octets.size() > 4) {
        AppendHex(octets, flags, out);
        return;
    }
    std::uint32_t value = 0;
    for (const unsigned char octet : octets) {
        value = value << 8 | octet;
    }
    char digits[10];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    out.append(digits, end);
}

std::wstring ReadUtf16(std::span<const unsigned char> content) {
    constexpr wchar_t kReplacement = 0xFFFD;
    std::wstring text;
    text.reserve(content.size() / 2);
    for (std::size_t i = 0; i + 1 < content.size(); i += 2) {
        const auto unit = static_cast<std::uint32_t>(content[i] << 8 | content[i + 1]);
        const bool surrogate = (unit & 0xF800) == 0xD800;
        if (!surrogate) {
            text += static_cast<wchar_t>(unit);
            continue;
        }
        const bool high = unit < 0xDC00;
        const std::uint32_t low =
            high && i + 3 < content.size()
                ? static_cast<std::uint32_t>(content[i + 2] << 8 | content[i + 3])
                : 0;
        if ((low & 0xFC00) == 0xDC00) {
            text += static_cast<wchar_t>(0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00));
            i += 2;
        } else {
            text += kReplacement;
        }
    }
    return text;
}

std::wstring WidenAscii(std::string_view text) {
    return {text.begin(), text.end()};
}

}  // namespace ca
