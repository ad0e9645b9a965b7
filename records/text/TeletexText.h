#pragma once

#include <span>
#include <string>

namespace ca {

/// The characters of octets that are not UTF-8, in a string of an old type (TeletexString) or of one
/// that has ASCII only (PrintableString, IA5String): Latin-1, or T.61 when it is plain that they
/// are that. T.61 (ISO 6937) writes an accent in front of its letter, "M\xC8uller", where Latin-1
/// would have a capital letter inside a word, "M\u00C8uller".
std::wstring ReadTeletex(std::span<const unsigned char> octets);

}  // namespace ca
