#include "asn1/EnclosedBlocks.h"

#include "asn1/Asn1Damage.h"
#include "asn1/Asn1Tags.h"

#include <utility>

namespace {

// Not set in the universal class.
constexpr unsigned char kClassBits = 0xC0;

// The octets in which something else may be encoded.
std::span<const unsigned char> OpaqueContent(const CAsn1Block& block) {
    const std::span<const unsigned char> content = block.GetRawContent();
    if (block.tag == kAsn1OctetString) {
        return content;
    }
    // An encoding is whole octets: with unused bits the value is flags or a number.
    const bool isWholeOctets = block.tag == kAsn1BitString && !content.empty() && content[0] == 0;
    return isWholeOctets ? content.subspan(1) : std::span<const unsigned char>();
}

// Digests and random numbers seldom look like elements, and hardly ever like these.
bool IsUniversal(std::span<const unsigned char> elements) {
    CAsn1Element element;
    for (CAsn1Cursor cursor(elements); !cursor.AtEnd();) {
        if (cursor.Next(element) != Asn1Fault::kNone || (element.tag & kClassBits) != 0) {
            return false;
        }
    }
    return true;
}

}  // namespace

namespace ca {

std::span<const unsigned char> EnclosedEncoding(const CAsn1Block& block) {
    const std::span<const unsigned char> content = OpaqueContent(block);
    const bool isEncoding = content.size() >= 2 && IsWellFormed(content) && IsUniversal(content);
    return isEncoding ? content : std::span<const unsigned char>();
}

std::unique_ptr<CCryptAsn1Parser> ParseEnclosed(std::span<const unsigned char> encoding) {
    auto parser = std::make_unique<CCryptAsn1Parser>();
    // Reading a BIT STRING of it may clear bits, as in the buffer that it is a part of.
    parser->Parse(const_cast<unsigned char*>(encoding.data()),
                  static_cast<unsigned>(encoding.size()),
                  /*stopAtTruncation=*/true, /*continueOnLengthMismatch=*/true,
                  /*singleRoot=*/false);
    return parser;
}

CEnclosedBlocks::Blocks CEnclosedBlocks::Of(const CAsn1Block& block) {
    if (block.tag != kAsn1OctetString && block.tag != kAsn1BitString) {
        return {};
    }
    // What encloses nothing is remembered too, so that each block is judged once.
    const auto [place, isNew] = m_enclosed.try_emplace(&block);
    if (const auto encoding = isNew ? EnclosedEncoding(block) : std::span<const unsigned char>();
        !encoding.empty()) {
        place->second = ParseEnclosed(encoding);
        for (const CAsn1Block* root : place->second->GetRoots()) {
            m_around.emplace(root, &block);
        }
    }
    return place->second ? place->second->GetRoots() : Blocks();
}

const CAsn1Block* CEnclosedBlocks::Around(const CAsn1Block& element) const {
    const auto found = m_around.find(&element);
    return found != m_around.end() ? found->second : nullptr;
}

void CEnclosedBlocks::Clear() {
    m_around.clear();
    m_enclosed.clear();
}

}  // namespace ca
