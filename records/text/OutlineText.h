#pragma once

#include <span>
#include <string>

struct CAsn1Element;

namespace ca {

/// One line an element, nested ones indented: "SEQUENCE", "UTF8 STRING: text".
std::wstring OutlineText(const CAsn1Element& element);

/// "Unreadable value: " and the octets as hexadecimal digits.
std::wstring UnreadableText(std::span<const unsigned char> octets);

/// For a value whose type is not known: the outline of well-formed elements, hexadecimal digits for
/// anything else. The octets are not changed.
std::wstring UnknownValueText(std::span<const unsigned char> octets);

}  // namespace ca
