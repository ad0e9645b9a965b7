#pragma once

#include <cstdint>

namespace ca {

/// True for what IsHiddenCharacter() may be true for: all but ASCII, and the letters of Europe and
/// the Near East, has to be looked up.
constexpr bool MayBeHidden(std::uint32_t code) noexcept {
    return code - 0x20 >= 0x7F - 0x20 && code - 0x350 >= 0x61C - 0x350;
}

/// The same from the table of HiddenCharacters.cpp.
bool IsInHiddenTable(std::uint32_t code) noexcept;

/// True for a character that does not show, or changes how what stands around it is shown:
/// controls, ends of lines and paragraphs (U+2028, U+2029), marks of direction, and whatever leaves
/// no trace (Default_Ignorable_Code_Point of UAX 44: soft hyphen, joiners, fillers, variation
/// selectors, tags). Variation selectors and joiners have honest uses, but two names that differ in
/// one only must not look alike. Also noncharacters, which toolkits give meanings of their own (Qt
/// breaks a line at U+FDD0), and what is not a Unicode character at all. Blanks that take room are
/// not hidden.
inline bool IsHiddenCharacter(wchar_t c) noexcept {
    const auto code = static_cast<std::uint32_t>(c);
    return MayBeHidden(code) && IsInHiddenTable(code);
}

}  // namespace ca
