#include "asn1/Asn1Text.h"

#include "asn1/IntegerContent.h"
#include "common/Hex.h"

#include <array>
#include <charconv>
#include <chrono>
#include <langinfo.h>

namespace {

constexpr std::size_t kUtcFields = 6;  // YYMMDDhhmmss

// The locale's time of day is hh:mm:ss, as in the "C" locale.
bool HasPlainTimeFormat() {
    const std::string_view format = nl_langinfo(T_FMT);
    return format == "%H:%M:%S" || format == "%T";
}

bool AreFieldsInRange(std::span<const unsigned, kUtcFields> fields) {
    const auto [year, month, day, hour, minute, second] =
        std::array{fields[0], fields[1], fields[2], fields[3], fields[4], fields[5]};
    // Two digits count from 2000, as CAsn1Time reads them: its text and this one must agree.
    const std::chrono::year_month_day date(std::chrono::year(2000 + static_cast<int>(year)),
                                           std::chrono::month(month), std::chrono::day(day));
    return date.ok() && hour <= 23 && minute <= 59 && second <= 59;
}

}  // namespace

namespace ca {

void AppendHex(std::span<const unsigned char> octets, unsigned flags, std::string& out) {
    if ((flags & kHexSkipLeadingZero) != 0 && !octets.empty() && octets[0] == 0) {
        // The octet that keeps a number with its first bit set positive (X.690, 8.3.3).
        octets = octets.subspan(1);
    }
    AddHex(octets, out, (flags & kHexUpperCase) != 0 ? kUpperHexDigits : kLowerHexDigits,
           (flags & kHexColons) != 0 ? ':' : '\0');
}

void AppendInteger(std::span<const unsigned char> octets, unsigned flags, std::string& out) {
    const auto value = ReadUnsigned(octets);
    if (!value) {
        AppendHex(octets, flags, out);
        return;
    }
    // The most that 32 bits have.
    char digits[10];
    const auto end = std::to_chars(digits, digits + sizeof digits, *value).ptr;
    out.append(digits, end);
}

bool AppendPlainUtcTime(std::span<const unsigned char> content, std::string& out) {
    constexpr std::size_t kDigits = kUtcFields * 2;
    const bool zoned =
        content.size() > kDigits && (content[kDigits] == '+' || content[kDigits] == '-');
    // Whatever CAsn1Time may read differently is left to it.
    if (content.size() < kDigits || zoned || !HasPlainTimeFormat()) {
        return false;
    }
    unsigned fields[kUtcFields];
    for (std::size_t i = 0; i < kUtcFields; ++i) {
        const unsigned tens = content[2 * i] - unsigned{'0'};
        const unsigned ones = content[2 * i + 1] - unsigned{'0'};
        if (tens > 9 || ones > 9) {
            return false;
        }
        fields[i] = tens * 10 + ones;
    }
    if (!AreFieldsInRange(fields)) {
        return false;
    }
    const auto field = [&content](std::size_t i) {
        return std::string_view(reinterpret_cast<const char*>(content.data()) + 2 * i, 2);
    };
    // Day, month and year in the order of all times that answers show.
    out.append(field(2)).append(".").append(field(1)).append(".20").append(field(0));
    out.append(" ").append(field(3)).append(":").append(field(4)).append(":").append(field(5));
    return true;
}

std::wstring WidenAscii(std::string_view text) {
    return {text.begin(), text.end()};
}

}  // namespace ca
