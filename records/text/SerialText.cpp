#include "records/text/SerialText.h"

#include "asn1/IntegerContent.h"
#include "records/text/VisibleText.h"

namespace {

using Octets = std::span<const unsigned char>;

// A serial number has 20 octets at most (RFC 5280, 4.1.2.2); damaged ones may have more.
constexpr std::size_t kMaxDigits = 4096;

int DigitValue(wchar_t c) {
    if (c >= L'0' && c <= L'9') {
        return c - L'0';
    }
    // Small and capital letters differ in this bit.
    const wchar_t lower = static_cast<wchar_t>(c | 0x20);
    return lower >= L'a' && lower <= L'f' ? lower - L'a' + 10 : -1;
}

}  // namespace

namespace ca {

std::wstring SerialText(Octets octets) {
    if (!IsNegativeInteger(octets)) {
        // The zero octet that only keeps a number positive is not shown. Others are: numbers of
        // different octets must not look alike.
        const bool isSignOnly =
            octets.size() > 1 && octets[0] == 0 && IsNegativeInteger(octets.subspan(1));
        return Hex(octets.subspan(isSignOnly ? 1 : 0));
    }
    std::vector<unsigned char> magnitude(octets.begin(), octets.end());
    NegateInteger(magnitude);
    return L'-' + Hex(magnitude);
}

std::optional<std::vector<unsigned char>> ReadSerialText(std::wstring_view text) {
    const bool isNegative = text.starts_with(L'-');
    text.remove_prefix(isNegative ? 1 : 0);
    std::vector<unsigned char> digits;
    for (const wchar_t c : text) {
        // As people copy them from other programs.
        if (c == L' ' || c == L':') {
            continue;
        }
        const int value = DigitValue(c);
        if (value < 0 || digits.size() == kMaxDigits) {
            return std::nullopt;
        }
        digits.push_back(static_cast<unsigned char>(value));
    }
    // A digit without a partner is the low one of the first octet.
    if (digits.size() % 2 != 0) {
        digits.insert(digits.begin(), 0);
    }
    std::vector<unsigned char> number(1);  // room for the sign
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        number.push_back(static_cast<unsigned char>(digits[i] << 4 | digits[i + 1]));
    }
    if (isNegative) {
        NegateInteger(number);
    }
    // Compared with octets of certificates, where DER has no padding (X.690, 8.3.2).
    const Octets content = WithoutSignOctets(number);
    return std::vector<unsigned char>(content.begin(), content.end());
}

}  // namespace ca
