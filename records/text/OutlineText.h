#pragma once

#include <span>
#include <string>

struct CAsn1Element;

namespace ca {

class CTextLines;

/// Says an element with all that is inside, one line an element, nested ones indented: "SEQUENCE",
/// "UTF8 STRING: text".
void SayOutline(const CAsn1Element& element, CTextLines& lines);

/// "Unreadable value: " and the octets as hexadecimal digits.
std::wstring UnreadableText(std::span<const unsigned char> octets);

/// Says a value whose type is not known: the outline of well-formed elements, hexadecimal digits
/// for anything else. The octets are not changed.
void SayUnknownValue(std::span<const unsigned char> octets, CTextLines& lines);

/// The same for a value that is not of its type, "Unreadable value: " in front: after it an
/// outline of one line, below it a longer one. What is wrong with it is the caller's to say.
void SayOddValue(std::span<const unsigned char> octets, CTextLines& lines);

}  // namespace ca
