#pragma once

#include <charconv>
#include <concepts>
#include <iterator>
#include <limits>
#include <string>

namespace ca {

/// Decimal digits, "-" in front of a negative number; 0 and 1 for truth values.
///
/// std::to_wstring() formats by way of a stream of wide characters. For each of those glibc takes
/// its lock over character sets, which stays locked in a child if a thread holds it as the parent
/// forks.
template <std::integral Number>
std::wstring DecimalText(Number number) {
    const auto promoted = +number;
    char digits[std::numeric_limits<decltype(promoted)>::digits10 + 3]{};
    char* const end = std::to_chars(std::begin(digits), std::end(digits), promoted).ptr;
    return std::wstring(digits, end);
}

}  // namespace ca
