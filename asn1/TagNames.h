#pragma once

#include <cstdint>
#include <string>

// What the tags are called: one table, in the words that each answer has for them.

/// In the JSON dump of a tree: the name of an identifier octet, "INTEGER"; "" for constructed types
/// and for those without a class. Static.
const char* Asn1TagName(unsigned char tag) noexcept;

namespace ca {

/// In listings, for people who read structures: "SEQUENCE", "[0]", "[APPLICATION 3]".
std::string TagText(std::uint8_t tag);

/// In an outline, the description of a value that has no formatter of its own: "UTF8 STRING",
/// "[0]", "[UNIVERSAL 9]".
std::wstring OutlineTagText(std::uint8_t tag);

}  // namespace ca
