#pragma once

#include "asn1/Asn1Element.h"
#include "asn1/Asn1Tags.h"
#include "asn1/CryptAsn1Base.h"
#include "asn1/IntegerContent.h"

#include <cstdint>
#include <span>
#include <string_view>

// Small things that readers of elements share.

namespace ca {

using Octets = std::span<const unsigned char>;

/// Octets as a key of a container.
inline std::string_view AsText(Octets octets) {
    return {reinterpret_cast<const char*>(octets.data()), octets.size()};
}

/// Identifier octets of [number], primitive and constructed.
constexpr unsigned char ContextTag(unsigned number) {
    return static_cast<unsigned char>(0x80U | number);
}
constexpr unsigned char ContextConstructed(unsigned number) {
    return static_cast<unsigned char>(0xA0U | number);
}

/// The element that begins at the first of `octets`; one without octets when there is none.
inline CAsn1Element FirstElement(Octets octets) {
    CAsn1Element element;
    CAsn1Cursor cursor(octets);
    if (!cursor.AtEnd()) {
        cursor.Next(element);
    }
    return element;
}

/// The element that an object is bound to.
inline CAsn1Element ElementOf(const CAsn1Object& object) {
    const CAsn1Block& block = *object.GetBlock();
    CAsn1Element element;
    element.tag = block.tag;
    element.indefinite = block.isUnknownLength;
    element.raw = block.GetRawEncoding();
    element.content = {block.content, block.contentLength};
    return element;
}

/// Elements that are left to read, what cannot be read counting as one.
inline std::size_t CountElements(CAsn1Cursor cursor) {
    std::size_t count = 0;
    CAsn1Element element;
    for (; !cursor.AtEnd(); ++count) {
        if (cursor.Next(element) != Asn1Fault::kNone) {
            cursor = {};
        }
    }
    return count;
}

/// The content of an element with this identifier octet; empty for another one.
inline Octets ContentIf(const CAsn1Element& element, unsigned char tag) {
    return element.tag == tag ? Octets(element.content) : Octets();
}

/// The octets of a BIT STRING after the count of unused bits.
inline Octets BitOctets(const CAsn1Element& bitString) {
    const Octets content = bitString.content;
    return content.empty() ? content : content.subspan(1);
}

/// Reads a non-negative INTEGER or ENUMERATED of up to four octets after leading zeros; the type
/// may be hidden by an implicit tag.
inline bool ReadSmallInteger(const CAsn1Element& element, std::uint32_t& value) {
    Octets octets = element.content;
    if (element.IsConstructed() || octets.empty() || IsNegativeInteger(octets)) {
        return false;
    }
    while (octets.size() > 1 && octets[0] == 0) {
        octets = octets.subspan(1);
    }
    const auto number = ReadUnsigned(octets);
    if (!number) {
        return false;
    }
    value = *number;
    return true;
}
inline bool ReadSmallInteger(const CAsn1Object& number, std::uint32_t& value) {
    return ReadSmallInteger(ElementOf(number), value);
}

}  // namespace ca
