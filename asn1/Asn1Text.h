#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

// How contents read as text; what the typed classes and the JSON dump share. UTF-8.

namespace ca {

/// Ways to write hexadecimal digits.
enum HexFlag : unsigned {
    kHexUpperCase = 1,
    kHexSkipLeadingZero = 2,  ///< A first octet of zero is left out.
    kHexColons = 4,           ///< ":" between octets.
};

/// Appends two digits an octet. \param flags  HexFlag, joined by |.
void AppendHex(std::span<const unsigned char> octets, unsigned flags, std::string& out);

/// A number of up to four octets read unsigned, more in hexadecimal.
void AppendInteger(std::span<const unsigned char> octets, unsigned flags, std::string& out);

/// Appends what CAsn1UTCTime shows when that is plain to see: digits throughout, all fields in
/// their ranges, no zone offset, and a locale that writes times as hh:mm:ss. False otherwise.
bool AppendPlainUtcTime(std::span<const unsigned char> content, std::string& out);

/// Widens text known to be ASCII.
std::wstring WidenAscii(std::string_view text);

}  // namespace ca
