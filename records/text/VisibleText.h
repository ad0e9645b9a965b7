#pragma once

#include "asn1/Charset.h"
#include "common/HiddenCharacters.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

struct CAsn1Element;
class CAsn1Object;

namespace ca {

/// Characters of one value's text; what is longer is cut, with a mark.
inline constexpr std::size_t kMaxValueText = 65536;
/// The same here and now: fewer where an answer has become so long that they would not fit. With a
/// copy or two while it is made such a text takes at most what is left of the budget.
std::size_t MaxValueText() noexcept;
/// Elements of one list that a text shows; what is more is counted.
inline constexpr std::size_t kMaxListed = 1000;

/// Appends a text from outside so that it can neither hide nor pretend anything: a hidden character
/// (see common/HiddenCharacters.h) as \uXXXX or, beyond U+FFFF, \UXXXXXXXX, in lower-case digits; a
/// backslash of its own that would read as the beginning of such an escape as \u005c. Every other
/// backslash stays, so that paths and accounts read as they are, and every text has its own form.
/// Cut after MaxValueText() characters, with a mark.
void AppendVisible(std::wstring& out, std::wstring_view text);
std::wstring Visible(std::wstring_view text);

/// The same for a text that was made by AppendVisible() or by somebody like it, to be on the safe
/// side: what is hidden in it still is escaped, and its backslashes stay.
void AppendShown(std::wstring& out, std::wstring_view text);

/// Appends the escape of one character: \uXXXX or \UXXXXXXXX.
void AppendEscape(std::wstring& out, wchar_t c);
std::wstring EscapeText(wchar_t c);

/// True for a text that looks like the value of a type without characters in a name: "#0500".
bool ReadsAsOctets(std::wstring_view text) noexcept;

/// True for a text that was cut at its bound.
bool IsCut(std::wstring_view text) noexcept;

/// Appends lower-case hexadecimal digits, two an octet, cut after MaxValueText() characters.
void AppendHex(std::wstring& out, std::span<const unsigned char> octets);
std::wstring Hex(std::span<const unsigned char> octets);

/// The characters of an element of a string type, as they stand (not yet made visible). Empty for
/// other types.
///
/// A UTF8String's malformed octets are U+FFFD. The types that have ASCII only, and TeletexString,
/// hold UTF-8 as often as not; octets that are not are read as Latin-1, which is what issuers put
/// there, or as T.61 where only that gives a word (ReadTeletex()).
std::wstring TextOf(const CAsn1Element& element);
std::wstring TextOf(const CAsn1Object& text);

/// Visible(TextOf(element)) for string types, the first character of what would read as octets
/// escaped; "#" and the hexadecimal encoding for all others.
std::wstring ValueText(const CAsn1Element& element);
std::wstring ValueText(const CAsn1Object& value);
/// The same for a text that was read already.
std::wstring ValueText(std::wstring_view text);

/// Base64 of octets as a record's text.
std::string Base64Text(std::span<const unsigned char> octets);

}  // namespace ca
