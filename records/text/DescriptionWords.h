#pragma once

#include <cstdint>
#include <string>

namespace ca {

/// Texts of descriptions that are not captions; the rows of DescriptionWords.inc.
enum class Word : std::uint8_t {
#define CA_WORD(name, english, russian) name,
#include "records/text/DescriptionWords.inc"
#undef CA_WORD
};

/// In the current language; static.
const wchar_t* WordText(Word word) noexcept;

/// "12 octets".
std::wstring OctetsCountText(std::size_t count);

}  // namespace ca
