#include "asn1/Asn1Oid.h"

#include "asn1/Asn1Text.h"
#include "common/Encode.h"

#include <charconv>
#include <utility>

namespace {

// The last arcs of the first two roots go up to 39, so the first subidentifier tells them apart.
constexpr std::uint32_t kArcsPerRoot = 40;

void AppendArc(std::int32_t arc, std::string& out) {
    char digits[11];
    out.append(digits, std::to_chars(digits, digits + sizeof digits, arc).ptr);
}

// Wider than 32 bits on the way, so that an arc of 32 bits does not overflow a signed number.
std::uint32_t ReadArc(const std::wstring& text) {
    return static_cast<std::uint32_t>(std::stoll(text));
}

// Octets whose sum is the value, all but the last with bit 8 set.
void EncodeFirst(std::uint32_t value, std::vector<unsigned char>& content) {
    while (value > 0x7F) {
        const std::uint32_t part = value < 0xFF ? 0x80 : 0xFF;
        content.push_back(static_cast<unsigned char>(part));
        value -= part;
    }
    content.push_back(static_cast<unsigned char>(value));
}

// Base 128, most significant first, without leading zeros (X.690, 8.19.2).
void EncodeArc(std::uint32_t value, std::vector<unsigned char>& content) {
    for (unsigned shift = 28; shift != 0; shift -= 7) {
        if (value >> shift != 0) {
            content.push_back(static_cast<unsigned char>(0x80U | (value >> shift & 0x7FU)));
        }
    }
    content.push_back(static_cast<unsigned char>(value & 0x7FU));
}

}  // namespace

void CAsn1ObjectIdentifier::Decode() {
    m_text = ca::WidenAscii(GetDottedText(Content()));
}

std::wstring CAsn1ObjectIdentifier::GetFormattedString([[maybe_unused]] unsigned int flags) const {
    return m_text;
}

std::string CAsn1ObjectIdentifier::GetDottedText(std::span<const unsigned char> content) {
    std::string text;
    std::uint32_t value = 0;
    for (const unsigned char octet : content) {
        const bool first = text.empty();
        value = first ? value + octet : value << 7 | (octet & 0x7FU);
        if ((octet & 0x80U) != 0) {
            continue;
        }
        if (first) {
            // All that does not fit roots 0 and 1 is of root 2 (X.690, 8.19.4).
            const std::uint32_t root = std::min<std::uint32_t>(value / kArcsPerRoot, 2);
            AppendArc(static_cast<std::int32_t>(root), text);
            value -= root * kArcsPerRoot;
        }
        text += '.';
        AppendArc(static_cast<std::int32_t>(value), text);
        value = 0;
    }
    return text;
}

void CAsn1ObjectIdentifier::_Encode() {
    std::vector<std::wstring> arcs;
    ca::Split(m_text, L".", arcs);
    std::vector<unsigned char> content;
    // A text of fewer than two arcs has no encoding, which stays empty.
    if (arcs.size() >= 2) {
        EncodeFirst(ReadArc(arcs[0]) * kArcsPerRoot + ReadArc(arcs[1]), content);
    }
    for (std::size_t i = 2; i < arcs.size(); ++i) {
        EncodeArc(ReadArc(arcs[i]), content);
    }
    SetContent(std::move(content));
}

void CAsn1ObjectIdentifier::SetValue(std::wstring text) {
    m_text = std::move(text);
    SetChanged(true);
}
