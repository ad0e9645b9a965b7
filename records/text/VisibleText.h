#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

struct CAsn1Element;

namespace ca {

/// Characters of one value's text; what is longer is cut, with a mark.
inline constexpr std::size_t kMaxValueText = 65536;
/// The same here and now: fewer where an answer has become so long that they would not fit. With a
/// copy or two while it is made such a text takes at most what is left of the budget.
std::size_t MaxValueText() noexcept;
/// Elements of one list that a text shows; what is more is counted.
inline constexpr std::size_t kMaxListed = 1000;

/// True for characters that would not show, or would change how what stands around them is shown:
/// controls (C0, DEL, C1) and bidirectional marks (U+200E/F, U+202A-202E, U+2066-2069).
inline bool IsHiddenCharacter(wchar_t c) noexcept {
    const auto code = static_cast<std::uint32_t>(c);
    if (code - 0x20 < 0x7F - 0x20) {
        return false;
    }
    return code < 0xA0 || code == 0x200E || code == 0x200F || (code >= 0x202A && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069);
}

/// Appends a text from outside with its hidden characters as \uXXXX, cut after MaxValueText().
void AppendVisible(std::wstring& out, std::wstring_view text);
std::wstring Visible(std::wstring_view text);

/// Appends lower-case hexadecimal digits, two an octet, cut after MaxValueText() characters.
void AppendHex(std::wstring& out, std::span<const unsigned char> octets);
std::wstring Hex(std::span<const unsigned char> octets);

/// True when the element is of one of the character string types of X.680.
bool IsText(const CAsn1Element& element) noexcept;

/// The characters of a element of a string type, as they stand (not yet made visible). UTF-8 with
/// malformed octets as U+FFFD; a TeletexString that is no UTF-8 is read as Latin-1, which is what
/// issuers put there. Empty for other types.
std::wstring TextOf(const CAsn1Element& element);

/// Visible(TextOf(element)) for string types; "#" and the hexadecimal encoding for all others.
std::wstring ValueText(const CAsn1Element& element);

/// Base64 of octets as a record's text.
std::string Base64Text(std::span<const unsigned char> octets);

}  // namespace ca
