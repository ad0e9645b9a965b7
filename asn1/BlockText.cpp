#include "asn1/BlockText.h"

#include "asn1/Asn1Element.h"
#include "asn1/Asn1Tags.h"
#include "asn1/Asn1Text.h"
#include "asn1/BerHeader.h"
#include "asn1/IntegerContent.h"
#include "asn1/OidTable.h"
#include "common/DecimalText.h"
#include "common/Encode.h"

#include <algorithm>
#include <cstdio>
#include <span>
#include <string_view>

namespace {

using Octets = std::span<const unsigned char>;

// The longest identifier whose text is wanted; a longer one is shown by its octets.
constexpr std::size_t kMaxOid = 256;

std::wstring HexText(Octets octets, std::size_t longest) {
    std::string text;
    ca::AppendHex(octets.first(std::min(octets.size(), longest / 2 + 1)), 0, text);
    return ca::WidenAscii(text);
}

std::wstring NumberText(Octets octets, std::size_t longest) {
    const auto number = ca::ReadInteger(octets);
    return number ? ca::DecimalText(*number) : HexText(octets, longest);
}

std::wstring IdentifierText(Octets octets, std::size_t longest) {
    if (octets.size() > kMaxOid) {
        return HexText(octets, longest);
    }
    std::wstring text = ca::OidText(octets);
    if (const ca::OidInfo* const info = ca::FindOid(octets)) {
        text.append(L" ").append(info->Name());
    }
    return text;
}

// The first octet counts the unused bits (X.690, 8.6.2.2); it is said only where there are some.
std::wstring BitsText(Octets octets, std::size_t longest) {
    if (octets.empty()) {
        return L"";
    }
    const std::wstring text = HexText(octets.subspan(1), longest);
    return octets[0] == 0 ? text
                          : text + L" (" + ca::DecimalText(octets[0]) + L" " +
                                SetZORNAMessage(kMsgUnusedBits) + L")";
}

std::wstring Quoted(const std::wstring& text) {
    return L"\"" + text + L"\"";
}

std::wstring Utf8Text(Octets octets, std::size_t longest) {
    // A character takes at most four octets.
    const auto wanted = octets.first(std::min(octets.size(), 4 * longest));
    return Quoted(ca::u8u16(std::string(wanted.begin(), wanted.end())));
}

std::wstring BmpText(Octets octets, std::size_t longest) {
    return Quoted(ca::ReadUtf16(octets.first(std::min(octets.size(), 2 * longest))));
}

// UTCTime YYMMDDhhmmssZ, GeneralizedTime YYYYMMDDhhmmssZ (RFC 5280, 4.1.2.5); others stay as they
// are.
std::wstring TimeText(Octets octets, bool hasCentury, std::size_t longest) {
    std::string text(octets.begin(), octets.begin() + static_cast<std::ptrdiff_t>(
                                                          std::min(octets.size(), longest)));
    const std::size_t digits = hasCentury ? 14 : 12;
    if (octets.size() != digits + 1 || text.back() != 'Z' ||
        !std::all_of(text.begin(), text.end() - 1, [](char c) { return c >= '0' && c <= '9'; })) {
        return Quoted(ca::u8u16(text));
    }
    // From 50 on the years are those of the last century (RFC 5280, 4.1.2.5.1).
    if (!hasCentury) {
        text.insert(0, text[0] < '5' ? "20" : "19");
    }
    const auto part = [&text](std::size_t at, std::size_t count) { return text.substr(at, count); };
    return ca::WidenAscii(part(0, 4) + "-" + part(4, 2) + "-" + part(6, 2) + " " + part(8, 2) +
                          ":" + part(10, 2) + ":" + part(12, 2) + " UTC");
}

// Contents of a type that the tag does not tell: a text when it reads as one.
std::wstring UnknownText(Octets octets, std::size_t longest) {
    const bool isText = !octets.empty() && std::all_of(octets.begin(), octets.end(), [](auto c) {
        return c >= 0x20 && c < 0x7F;
    });
    return isText ? Utf8Text(octets, longest) : HexText(octets, longest);
}

bool IsTextTag(std::uint8_t tag) {
    constexpr std::uint8_t kOtherTexts[] = {0x15, 0x19, 0x1A, 0x1B};  // Videotex to General
    return tag == kAsn1Utf8String || (tag >= kAsn1NumericString && tag <= kAsn1TeletexString) ||
           tag == kAsn1Ia5String ||
           std::find(std::begin(kOtherTexts), std::end(kOtherTexts), tag) != std::end(kOtherTexts);
}

}  // namespace

namespace ca {

std::wstring BlockText(const CAsn1Block& block, std::size_t longest) {
    const Octets octets = block.GetRawContent();
    if (block.IsConstructed() || block.content == nullptr) {
        return L"";
    }
    switch (block.tag) {
        case kAsn1Boolean:
            return octets.empty() ? L"" : octets[0] != 0 ? L"TRUE" : L"FALSE";
        case kAsn1Integer:
        case kAsn1Enumerated:
            return NumberText(octets, longest);
        case kAsn1ObjectIdentifier:
            return IdentifierText(octets, longest);
        case kAsn1BitString:
            return BitsText(octets, longest);
        case kAsn1OctetString:
            return HexText(octets, longest);
        case kAsn1UnicodeString:
            return BmpText(octets, longest);
        case kAsn1UtcTime:
        case kAsn1GeneralizedTime:
            return TimeText(octets, block.tag == kAsn1GeneralizedTime, longest);
        default:
            return IsTextTag(block.tag) ? Utf8Text(octets, longest) : UnknownText(octets, longest);
    }
}

std::size_t HeaderLength(const CAsn1Block& block) {
    return block.content != nullptr && block.start != nullptr
               ? static_cast<std::size_t>(block.content - block.start)
               : 0;
}

std::optional<std::uint32_t> AnnouncedLength(const CAsn1Block& block) {
    CBerHeader header;
    if (HeaderLength(block) < CBerHeader::kShortest || block.isUnknownLength ||
        !header.Read({block.start, block.GetAvailable()})) {
        return std::nullopt;
    }
    if (header.LengthOctets().empty()) {
        return block.start[1];
    }
    std::uint32_t length = 0;
    for (const unsigned char octet : header.LengthOctets()) {
        length = length << 8U | octet;
    }
    return length;
}

std::span<const unsigned char> FileOctets(const CAsn1Block& block) {
    if (block.start == nullptr) {
        return {};
    }
    // The tree's own lengths are those of the shortest form and may overrun; the octets tell what
    // the file has.
    CAsn1Cursor cursor({block.start, block.GetAvailable()});
    CAsn1Element element;
    if (!cursor.AtEnd() && cursor.Next(element) == Asn1Fault::kNone) {
        return element.raw;
    }
    return block.GetRawEncoding();
}

}  // namespace ca
