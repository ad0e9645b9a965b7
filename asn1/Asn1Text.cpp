#include "asn1/Asn1Text.h"

#include "asn1/Asn1Primitives.h"

#include <array>
#include <charconv>
#include <langinfo.h>

namespace {

constexpr char kLowerDigits[] = "0123456789abcdef";
constexpr char kUpperDigits[] = "0123456789ABCDEF";
constexpr std::size_t kUtcFields = 6;  // YYMMDDhhmmss

// Two digits an octet; returns behind the last.
char* WriteDigits(std::span<const unsigned char> octets, const char* digits, bool colons,
                  char* out) noexcept {
    for (std::size_t i = 0; i < octets.size(); ++i) {
        if (colons && i != 0) {
            *out++ = ':';
        }
        *out++ = digits[octets[i] >> 4];
        *out++ = digits[octets[i] & 0xF];
    }
    return out;
}

// The locale's time of day is hh:mm:ss, as in the "C" locale.
bool HasPlainTimeFormat() {
    const std::string_view format = nl_langinfo(T_FMT);
    return format == "%H:%M:%S" || format == "%T";
}

bool AreFieldsInRange(std::span<const int, kUtcFields> fields) {
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const auto [year, month, day, hour, minute, second] =
        std::array{fields[0], fields[1], fields[2], fields[3], fields[4], fields[5]};
    if (month < 1 || month > 12 || hour > 23 || minute > 59 || second > 59) {
        return false;
    }
    const bool leap = month == 2 && year % 4 == 0;  // of 2000 to 2099
    return day >= 1 && day <= kDays[month - 1] + (leap ? 1 : 0);
}

}  // namespace

namespace ca {

char* WriteHex(std::span<const unsigned char> octets, char* out) noexcept {
    return WriteDigits(octets, kLowerDigits, /*colons=*/false, out);
}

void AppendHex(std::span<const unsigned char> octets, unsigned flags, std::string& out) {
    if ((flags & CAsn1Integer::kSkipLeadingZero) != 0 && !octets.empty() && octets[0] == 0) {
        octets = octets.subspan(1);
    }
    if (octets.empty()) {
        return;
    }
    const char* digits = (flags & CAsn1Integer::kUpperCase) != 0 ? kUpperDigits : kLowerDigits;
    const bool colons = (flags & CAsn1Integer::kColons) != 0;
    const std::size_t start = out.size();
    out.resize(start + octets.size() * (colons ? 3 : 2) - (colons ? 1 : 0));
    WriteDigits(octets, digits, colons, out.data() + start);
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

bool AppendPlainUtcTime(std::span<const unsigned char> content, std::string& out) {
    constexpr std::size_t kDigits = kUtcFields * 2;
    const bool zoned =
        content.size() > kDigits && (content[kDigits] == '+' || content[kDigits] == '-');
    if (content.size() < kDigits || zoned || !HasPlainTimeFormat()) {
        return false;
    }
    int fields[kUtcFields];
    for (std::size_t i = 0; i < kUtcFields; ++i) {
        const unsigned tens = content[2 * i] - unsigned{'0'};
        const unsigned ones = content[2 * i + 1] - unsigned{'0'};
        if (tens > 9 || ones > 9) {
            return false;
        }
        fields[i] = static_cast<int>(tens * 10 + ones);
    }
    if (!AreFieldsInRange(fields)) {
        return false;
    }
    const auto field = [&content](std::size_t i) {
        return std::string_view(reinterpret_cast<const char*>(content.data()) + 2 * i, 2);
    };
    out.append(field(2)).append(".").append(field(1)).append(".20").append(field(0));
    out.append(" ").append(field(3)).append(":").append(field(4)).append(":").append(field(5));
    return true;
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
