#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ca {

/// A serial number, or another INTEGER that is a name rather than a count, in hexadecimal digits of
/// its content octets: the 00 that only keeps the number from being negative is dropped, others
/// stay; a negative number is "-" and the digits of its magnitude, in as many octets as it was
/// encoded. So 255 (00 ff) is "ff" and -1 (ff) is "-01", 00 00 01 is "000001": different octets
/// never read the same.
std::wstring SerialText(std::span<const unsigned char> octets);

/// The number of such a text as the content of an INTEGER with no octet too many. Blanks and colons
/// may stand between the digits, zeros in front. None for a text that is not such a number, or that
/// has more digits than any serial number.
std::optional<std::vector<unsigned char>> ReadSerialText(std::wstring_view text);

}  // namespace ca
