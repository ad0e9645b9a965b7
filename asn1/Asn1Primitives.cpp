#include "asn1/Asn1Primitives.h"

#include "asn1/Asn1Text.h"
#include "asn1/IntegerContent.h"

#include <algorithm>

void CAsn1Boolean::Decode() {
    const auto content = Content();
    // Any octet but zero is TRUE in BER (X.690, 8.2.2).
    m_value = !content.empty() && content[0] != 0;
}

std::wstring CAsn1Boolean::GetFormattedString([[maybe_unused]] unsigned int flags) const {
    return m_value ? L"True" : L"False";
}

void CAsn1Boolean::_Encode() {
    // The only TRUE of DER (X.690, 11.1).
    SetContent({static_cast<unsigned char>(m_value ? 0xFF : 0x00)});
}

void CAsn1Boolean::SetValue(bool value) {
    m_value = value;
    SetChanged(true);
}

void CAsn1Integer::Decode() {
    const auto content = Content();
    m_value.assign(content.begin(), content.end());
}

std::wstring CAsn1Integer::GetFormattedString(unsigned int flags) const {
    std::string text;
    ca::AppendInteger(m_value, flags, text);
    return ca::WidenAscii(text);
}

void CAsn1Integer::_Encode() {
    SetContent(m_value);
}

void CAsn1Integer::SetValue(std::vector<unsigned char> octets) {
    m_value = std::move(octets);
    SetChanged(true);
}

std::optional<std::uint32_t> CAsn1Integer::GetUInt32() const {
    return m_value.empty() ? std::nullopt : ca::ReadUnsigned(m_value);
}

std::wstring CAsn1Integer::GetHexString(unsigned int flags) const {
    return GetHexString(flags, m_value.data(), static_cast<unsigned>(m_value.size()));
}

std::wstring CAsn1Integer::GetHexString(unsigned int flags, const unsigned char* data,
                                        unsigned int size) {
    std::string text;
    ca::AppendHex({data, size}, flags, text);
    return ca::WidenAscii(text);
}

std::span<const unsigned char> CAsn1BitString::ClearUnusedBits(const CAsn1Block& block) {
    const auto content = block.GetRawContent();
    if (content.size() < 2) {
        return {};
    }
    // More than 7 is not allowed (X.690, 8.6.2.2); 8 clears the whole octet.
    const unsigned unused = std::min<unsigned>(content[0], 8);
    // Everything else only views the buffer. It was handed to Parse() as one that may be written.
    auto& last = const_cast<unsigned char&>(content.back());
    last = static_cast<unsigned char>(last & 0xFFU << unused);
    return content.subspan(1);
}

void CAsn1BitString::Decode() {
    const auto content = Content();
    m_unusedBits = content.empty() ? 0 : content[0];
    const auto octets = content.empty() ? content : ClearUnusedBits(*GetBlock());
    m_value.assign(octets.begin(), octets.end());
}

std::wstring CAsn1BitString::GetFormattedString([[maybe_unused]] unsigned int flags) const {
    return CAsn1Integer::GetHexString(0, m_value.data(), static_cast<unsigned>(m_value.size()));
}

// The count of unused bits stands in front (X.690, 8.6.2.1).
void CAsn1BitString::_Encode() {
    std::vector<unsigned char> content{m_unusedBits};
    content.insert(content.end(), m_value.begin(), m_value.end());
    SetContent(std::move(content));
}

void CAsn1BitString::SetValue(std::vector<unsigned char> octets, unsigned char unusedBits) {
    m_value = std::move(octets);
    m_unusedBits = unusedBits;
    SetChanged(true);
}

void CAsn1OctetString::Decode() {
    const auto content = Content();
    m_value.assign(content.begin(), content.end());
}

std::wstring CAsn1OctetString::GetFormattedString([[maybe_unused]] unsigned int flags) const {
    return CAsn1Integer::GetHexString(0, m_value.data(), static_cast<unsigned>(m_value.size()));
}

void CAsn1OctetString::_Encode() {
    // The content octets are the string's (X.690, 8.7.2).
    SetContent(m_value);
}

void CAsn1OctetString::SetValue(std::vector<unsigned char> octets) {
    m_value = std::move(octets);
    SetChanged(true);
}

void CAsn1ContructedOctetString::Decode() {
    m_value.clear();
    const CAsn1Block* root = GetBlock();
    if (root == nullptr) {
        return;
    }
    struct Level {
        const CAsn1Block* block;
        std::size_t next;
    };
    // Overrunning segments can show the same octets many times; the value stays within the buffer.
    const std::size_t limit = root->start != nullptr ? root->GetAvailable() : SIZE_MAX;
    std::vector<Level> open{{root, 0}};
    // Segments may hold segments (X.690, 8.7.3.2), to any depth.
    while (!open.empty()) {
        const CAsn1Block* segment = open.back().block->GetInnerBlock(open.back().next++);
        if (segment == nullptr) {
            open.pop_back();
        } else if (segment->tag == kAsn1ConstructedOctetString) {
            open.push_back({segment, 0});
        } else if (segment->tag == kAsn1OctetString) {
            auto octets = segment->GetRawContent();
            octets = octets.first(std::min(octets.size(), limit - m_value.size()));
            m_value.insert(m_value.end(), octets.begin(), octets.end());
        }
    }
}

std::wstring CAsn1ContructedOctetString::GetFormattedString(
    [[maybe_unused]] unsigned int flags) const {
    return CAsn1Integer::GetHexString(0, m_value.data(), static_cast<unsigned>(m_value.size()));
}

void CAsn1ContructedOctetString::_Encode() {
    SetContent(m_value);
    // One primitive segment round all octets. It views those that this object keeps.
    CAsn1Block* block = GetBlock();
    CAsn1Block* segment = block->AddInnerBlock();
    segment->tag = kAsn1OctetString;
    segment->content = block->content;
    segment->contentLength = block->contentLength;
    block->GetTotalLength(/*recompute=*/true);
}

void CAsn1ContructedOctetString::SetValue(std::vector<unsigned char> octets) {
    m_value = std::move(octets);
    SetChanged(true);
}
