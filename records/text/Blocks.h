#pragma once

#include "asn1/CryptAsn1Parser.h"

#include <cstdint>
#include <span>

namespace ca {

using Octets = std::span<const unsigned char>;

// Identifier octets of X.680 8.4 and X.690 8.1.2.
inline constexpr std::uint8_t kTagBoolean = 0x01;
inline constexpr std::uint8_t kTagInteger = 0x02;
inline constexpr std::uint8_t kTagBitString = 0x03;
inline constexpr std::uint8_t kTagOctetString = 0x04;
inline constexpr std::uint8_t kTagNull = 0x05;
inline constexpr std::uint8_t kTagOid = 0x06;
inline constexpr std::uint8_t kTagEnumerated = 0x0A;
inline constexpr std::uint8_t kTagUtcTime = 0x17;
inline constexpr std::uint8_t kTagGeneralizedTime = 0x18;
inline constexpr std::uint8_t kTagSequence = 0x30;
inline constexpr std::uint8_t kTagSet = 0x31;

/// Identifier octets of the context tag [number].
constexpr std::uint8_t ContextTag(unsigned number) {
    return static_cast<std::uint8_t>(0x80U | number);
}
constexpr std::uint8_t ContextConstructed(unsigned number) {
    return static_cast<std::uint8_t>(0xA0U | number);
}

/// The content octets as they stand in the buffer.
inline Octets ContentOf(const CAsn1Block& block) {
    return {block.content, block.contentLength};
}

/// The content when `block` is there and has this identifier octet; empty otherwise.
inline Octets ContentIf(const CAsn1Block* block, std::uint8_t tag) {
    return block != nullptr && block->tag == tag ? ContentOf(*block) : Octets();
}

/// The octets of a BIT STRING behind the count of unused bits.
inline Octets BitsOf(const CAsn1Block& bitString) {
    const Octets content = ContentOf(bitString);
    return content.empty() ? content : content.subspan(1);
}

/// A non-negative INTEGER of up to four octets behind leading zeros.
inline bool ReadSmallInteger(const CAsn1Block& block, std::uint32_t& value) {
    Octets octets = ContentOf(block);
    if ((block.tag & 0xC0U) == 0 && block.tag != kTagInteger && block.tag != kTagEnumerated) {
        return false;
    }
    if (octets.empty() || (octets[0] & 0x80U) != 0) {
        return false;
    }
    while (octets.size() > 1 && octets[0] == 0) {
        octets = octets.subspan(1);
    }
    if (octets.size() > 4) {
        return false;
    }
    value = 0;
    for (const unsigned char octet : octets) {
        value = (value << 8) | octet;
    }
    return true;
}

}  // namespace ca
