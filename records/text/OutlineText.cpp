#include "records/text/OutlineText.h"

#include "asn1/OidTable.h"
#include "records/text/Blocks.h"
#include "records/text/TextLines.h"
#include "records/text/TimeText.h"

#include <utility>
#include <vector>

namespace {

using ca::Octets;

struct TagRow {
    std::uint8_t tag;
    const wchar_t* name;
};

constexpr TagRow kTagNames[] = {
    {ca::kTagBoolean, L"BOOLEAN"},
    {ca::kTagInteger, L"INTEGER"},
    {ca::kTagBitString, L"BIT STRING"},
    {ca::kTagOctetString, L"OCTET STRING"},
    {ca::kTagNull, L"NULL"},
    {ca::kTagOid, L"OBJECT IDENTIFIER"},
    {ca::kTagEnumerated, L"ENUMERATED"},
    {0x0C, L"UTF8 STRING"},
    {0x0D, L"RELATIVE OID"},
    {0x12, L"NUMERIC STRING"},
    {0x13, L"PRINTABLE STRING"},
    {0x14, L"TELETEX STRING"},
    {0x16, L"IA5 STRING"},
    {ca::kTagUtcTime, L"UTC TIME"},
    {ca::kTagGeneralizedTime, L"GENERALIZED TIME"},
    {0x1A, L"VISIBLE STRING"},
    {0x1B, L"GENERAL STRING"},
    {0x1C, L"UNIVERSAL STRING"},
    {0x1E, L"UNICODE STRING"},
    {0x24, L"OCTET STRING"},
    {ca::kTagSequence, L"SEQUENCE"},
    {ca::kTagSet, L"SET"},
};

std::wstring TagText(const CAsn1Block& block) {
    for (const TagRow& row : kTagNames) {
        if (row.tag == block.tag) {
            return row.name;
        }
    }
    constexpr const wchar_t* kClasses[] = {L"[UNIVERSAL ", L"[APPLICATION ", L"[", L"[PRIVATE "};
    return kClasses[block.tag >> 6] + std::to_wstring(block.tag & 0x1FU) + L"]";
}

std::wstring PrimitiveText(const CAsn1Block& block) {
    switch (block.tag) {
        case ca::kTagOid:
            return ca::OidName(ca::ContentOf(block)) + L" (" + ca::OidText(ca::ContentOf(block)) +
                   L")";
        case ca::kTagUtcTime:
        case ca::kTagGeneralizedTime:
            return ca::TimeLine(block);
        case ca::kTagInteger:
        case ca::kTagEnumerated: {
            std::uint32_t value = 0;
            return ca::ReadSmallInteger(block, value) ? std::to_wstring(value)
                                                      : ca::Hex(ca::ContentOf(block));
        }
        case ca::kTagBitString:
            return ca::Hex(ca::BitsOf(block));
        default:
            return ca::IsText(block) ? ca::Visible(ca::TextOf(block))
                                     : ca::Hex(ca::ContentOf(block));
    }
}

void SayBlock(const CAsn1Block& block, ca::CTextLines& lines) {
    if (block.IsConstructed() || block.contentLength == 0) {
        lines.Line(TagText(block));
    } else {
        lines.Line(TagText(block), PrimitiveText(block));
    }
}

// Header of the element at the front of `octets`: its size, that of its content, and whether the
// content ends by a pair of zeros. False when it does not fit.
struct Header {
    std::size_t size;
    std::size_t content;
    bool isIndefinite;
};

bool ReadHeader(Octets octets, Header& header) {
    if (octets.size() < 2) {
        return false;
    }
    const unsigned char first = octets[1];
    header = {2, first, first == 0x80};
    if (header.isIndefinite) {
        header.content = 0;
        return (octets[0] & 0x20U) != 0;
    }
    if (first > 0x80) {
        const std::size_t count = first & 0x7FU;
        if (count > 4 || octets.size() < 2 + count) {
            return false;
        }
        header.size += count;
        header.content = 0;
        for (const unsigned char octet : octets.subspan(2, count)) {
            header.content = (header.content << 8) | octet;
        }
    }
    return header.content <= octets.size() - header.size;
}

}  // namespace

namespace ca {

bool IsWellFormed(Octets octets) {
    constexpr std::size_t kUntilZeros = SIZE_MAX;
    std::vector<std::size_t> ends;      // of the open elements; kUntilZeros for indefinite ones
    std::size_t limit = octets.size();  // no element may pass it
    std::vector<std::size_t> limits;
    std::size_t at = 0;
    while (at < octets.size() || !ends.empty()) {
        if (!ends.empty() && ends.back() == at) {
            ends.pop_back();
            limit = limits.back();
            limits.pop_back();
            continue;
        }
        const Octets rest = octets.subspan(at, limit - at);
        if (!ends.empty() && ends.back() == kUntilZeros && rest.size() >= 2 && rest[0] == 0 &&
            rest[1] == 0) {
            at += 2;
            ends.pop_back();
            limit = limits.back();
            limits.pop_back();
            continue;
        }
        Header header{};
        if (!ReadHeader(rest, header) || rest[0] == 0) {
            return false;
        }
        at += header.size;
        if ((rest[0] & 0x20U) == 0) {
            at += header.content;
            continue;
        }
        limits.push_back(limit);
        ends.push_back(header.isIndefinite ? kUntilZeros : at + header.content);
        limit = header.isIndefinite ? limit : at + header.content;
    }
    return !octets.empty();
}

std::wstring OutlineText(const CAsn1Block& block) {
    CTextLines lines;
    SayBlock(block, lines);
    // The way from `block` down to the element said last: a parent and its next child.
    std::vector<std::pair<const CAsn1Block*, std::size_t>> way{{&block, 0}};
    std::size_t said = 1;
    while (!way.empty()) {
        auto& [parent, next] = way.back();
        const CAsn1Block* child = parent->GetInnerBlock(next++);
        if (child == nullptr) {
            way.pop_back();
            continue;
        }
        if (++said > kMaxListed) {
            lines.Line(L"\u2026");
            break;
        }
        lines.SetLevel(way.size());
        SayBlock(*child, lines);
        way.emplace_back(child, 0);
    }
    return lines.Take();
}

std::wstring UnreadableText(Octets octets) {
    std::wstring text = SetZORNAMessage(kMsgUnreadable);
    AppendHex(text, octets);
    return text;
}

std::wstring UnknownValueText(Octets octets) {
    if (octets.empty() || !IsWellFormed(octets)) {
        return Hex(octets);
    }
    // Parsing wants octets it may change; reading an outline changes none, but the caller's are not
    // ours to lend.
    std::vector<unsigned char> copy(octets.begin(), octets.end());
    CCryptAsn1Parser parser;
    parser.Parse(copy.data(), static_cast<unsigned>(copy.size()), /*stopAtTruncation=*/true,
                 /*continueOnLengthMismatch=*/false, /*singleRoot=*/false);
    CTextLines lines;
    for (std::size_t i = 0; lines.Shows(i, parser.GetRootCount()); ++i) {
        lines.Block(OutlineText(*parser.GetRoot(i)));
    }
    return lines.Take();
}

}  // namespace ca
