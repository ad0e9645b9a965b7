#include "common/HiddenCharacters.h"

#include <algorithm>
#include <iterator>

namespace {

struct Range {
    std::uint32_t first;
    std::uint32_t last;
};

// Ascending.
constexpr Range kHidden[] = {
    {0x0000, 0x001F},    // C0 controls
    {0x007F, 0x009F},    // DEL, C1 controls
    {0x00AD, 0x00AD},    // soft hyphen
    {0x034F, 0x034F},    // combining grapheme joiner
    {0x061C, 0x061C},    // Arabic letter mark
    {0x115F, 0x1160},    // Hangul fillers
    {0x17B4, 0x17B5},    // Khmer inherent vowels
    {0x180B, 0x180F},    // Mongolian variation selectors and vowel separator
    {0x200B, 0x200F},    // zero-width space and joiners, marks of direction
    {0x2028, 0x202E},    // ends of line and paragraph, embeddings and overrides
    {0x2060, 0x206F},    // word joiner, invisible operators, isolates
    {0x2800, 0x2800},    // the pattern of Braille without dots
    {0x3164, 0x3164},    // Hangul filler
    {0xD800, 0xDFFF},    // surrogates
    {0xFDD0, 0xFDEF},    // noncharacters
    {0xFE00, 0xFE0F},    // variation selectors
    {0xFEFF, 0xFEFF},    // byte-order mark
    {0xFFA0, 0xFFA0},    // half-width Hangul filler
    {0xFFF0, 0xFFFC},    // annotations, the place of an object
    {0xFFFE, 0xFFFF},    // noncharacters
    {0x13430, 0x1343F},  // Egyptian joiners
    {0x1BCA0, 0x1BCA3},  // shorthand format controls
    {0x1D173, 0x1D17A},  // musical beams and slurs
    {0xE0000, 0xE0FFF},  // tags, further variation selectors
};

constexpr std::uint32_t kLastCharacter = 0x10FFFF;

}  // namespace

namespace ca {

bool IsInHiddenTable(std::uint32_t code) noexcept {
    const auto* const range = std::ranges::lower_bound(kHidden, code, {}, &Range::last);
    const bool isListed = range != std::end(kHidden) && code >= range->first;
    // The last two of each plane are noncharacters.
    return isListed || (code & 0xFFFEU) == 0xFFFEU || code > kLastCharacter;
}

}  // namespace ca
