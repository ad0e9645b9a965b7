#include "asn1/Asn1Typed.h"

#include "asn1/Asn1BlockReader.h"
#include "asn1/IntegerContent.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"

namespace {

// Segments of segments are allowed but never useful; each level is searched for its end anew.
constexpr std::size_t kMaxSegmentDepth = 16;

[[noreturn]] void ThrowBadSegments() {
    throw ca::Exception(ca::kErrAsn1Corrupted, SetZORNAMessage(kMsgAsn1Malformed));
}

void AppendSegments(std::span<const unsigned char> content, std::vector<unsigned char>& out) {
    // On the stack: cursors are two words each, and there are few.
    CAsn1Cursor open[kMaxSegmentDepth] = {CAsn1Cursor(content)};
    for (std::size_t depth = 1; depth != 0;) {
        CAsn1Cursor& cursor = open[depth - 1];
        if (cursor.AtEnd()) {
            --depth;
            continue;
        }
        CAsn1Element segment;
        if (cursor.Next(segment) != Asn1Fault::kNone ||
            (segment.tag & ~kAsn1ConstructedBit) != kAsn1OctetString) {
            ThrowBadSegments();
        }
        if (!segment.IsConstructed()) {
            out.insert(out.end(), segment.content.begin(), segment.content.end());
        } else if (depth == kMaxSegmentDepth) {
            ThrowBadSegments();
        } else {
            open[depth++] = CAsn1Cursor(segment.content);
        }
    }
}

}  // namespace

std::span<const unsigned char> CAsn1TypedObject::RawOctets() const {
    if (!m_element.raw.empty() || GetBlock() == nullptr) {
        return m_element.raw;
    }
    return GetBlock()->GetRawEncoding();
}

std::span<const unsigned char> CAsn1TypedObject::ContentOctets() const {
    return m_element.raw.empty() ? Content() : m_element.content;
}

CAsn1Element ReadElement(std::span<const unsigned char> octets, std::string_view name) {
    if (octets.empty()) {
        throw MakeAsn1Missing(name, 0);
    }
    CAsn1Element element;
    // Blocks count in 32 bits.
    const Asn1Fault fault =
        octets.size() > UINT32_MAX ? Asn1Fault::kMalformed : CAsn1Cursor(octets).Next(element);
    if (fault != Asn1Fault::kNone) {
        throw MakeAsn1Fault(fault, name, 0);
    }
    return element;
}

void BindBlock(CAsn1Block& block, const CAsn1Element& element, std::uint32_t offset) {
    block.SetRawEncoding(element.raw);
    block.content = element.content.data();
    block.contentLength = static_cast<std::uint32_t>(element.content.size());
    block.offset = offset;
    block.tag = element.tag;
    block.isUnknownLength = element.indefinite;
}

void BindRoot(CAsn1Block& block, const CAsn1Element& element, Asn1Blocks blocks) {
    if (blocks == Asn1Blocks::kAll && element.IsConstructed()) {
        try {
            CAsn1BlockReader(element.raw.data(), 0, static_cast<std::uint32_t>(element.raw.size()),
                             /*noThrow=*/false, /*continueOnLengthMismatch=*/false)
                .Read(block);
        } catch (const ca::Exception&) {
            // The members are read from the octets; they need no tree below.
            block.DeleteInnerBlocks();
            block.corrupted = true;
        }
    }
    BindBlock(block, element, 0);
}

std::span<const unsigned char> OctetsOf(const CAsn1Object* object) {
    const CAsn1Block* block = object != nullptr ? object->GetBlock() : nullptr;
    return block != nullptr ? std::span<const unsigned char>(block->content, block->contentLength)
                            : std::span<const unsigned char>();
}

std::vector<unsigned char> OctetStringOf(const CAsn1Object* object) {
    const CAsn1Block* block = object != nullptr ? object->GetBlock() : nullptr;
    CAsn1Element element;
    if (block != nullptr) {
        element.tag = block->tag;
        element.content = {block->content, block->contentLength};
    }
    return OctetStringOf(element);
}

std::vector<unsigned char> OctetStringOf(const CAsn1Element& element) {
    if (!element.IsConstructed()) {
        return {element.content.begin(), element.content.end()};
    }
    std::vector<unsigned char> out;
    // More than is needed by the segments' headers alone.
    out.reserve(element.content.size());
    AppendSegments(element.content, out);
    return out;
}

bool CAsn1Bits::operator[](std::size_t bit) const {
    // Trailing zero bits of named bits are left out in DER (X.690, 11.2.2): a missing bit is not
    // set.
    return bit / 8 < octets.size() && bit < octets.size() * 8 - unused &&
           (octets[bit / 8] & (0x80U >> (bit % 8))) != 0;
}

CAsn1Bits BitsOf(const CAsn1Object* object) {
    const auto content = OctetsOf(object);
    // The first octet counts the unused bits of the last one (X.690, 8.6.2.2, 8.6.2.3).
    if (content.empty() || content[0] > 7 || (content.size() == 1 && content[0] != 0)) {
        return {};
    }
    return {content.subspan(1), content[0]};
}

bool BooleanOf(const CAsn1Object* object) {
    const auto content = OctetsOf(object);
    return !content.empty() && content[0] != 0;
}

std::int64_t IntegerOf(const CAsn1Object* object, std::int64_t otherwise) {
    return ca::ReadInteger(OctetsOf(object)).value_or(otherwise);
}
