#pragma once

#include "asn1/CryptAsn1Parser.h"

#include <memory>
#include <span>
#include <unordered_map>

namespace ca {

/// The octets of an OCTET STRING, or of a BIT STRING of whole octets, where they are themselves
/// nothing but well-formed elements of universal types: extension values, keys, signatures. Empty
/// for everything else. Cost is linear in the content, but for strings inside it.
std::span<const unsigned char> EnclosedEncoding(const CAsn1Block& block);

/// What strings enclose, parsed when it is asked for and kept. One thread.
class CEnclosedBlocks {
  public:
    using Blocks = std::span<CAsn1Block* const>;

    /// The elements inside; none for a block that encloses nothing.
    Blocks Of(const CAsn1Block& block);
    /// The string that an element of Of() stands in; null for other blocks.
    const CAsn1Block* Around(const CAsn1Block& element) const;
    void Clear();

  private:
    // Null for a block that was looked at in vain. And the way back.
    std::unordered_map<const CAsn1Block*, std::unique_ptr<CCryptAsn1Parser>> m_enclosed;
    std::unordered_map<const CAsn1Block*, const CAsn1Block*> m_around;
};

/// Parses such octets; they outlive the parser.
std::unique_ptr<CCryptAsn1Parser> ParseEnclosed(std::span<const unsigned char> encoding);

}  // namespace ca
