#include "asn1/Asn1Primitives.h"

#include "asn1/Asn1Collections.h"
#include "asn1/Asn1Oid.h"
#include "asn1/Asn1Strings.h"
#include "asn1/Asn1Text.h"
#include "asn1/Asn1Time.h"
#include "asn1/IntegerContent.h"

#include <algorithm>
#include <memory>

namespace {

template <class T>
CAsn1Object* Create(CAsn1Block* block, CAsn1Object* parent) {
    return std::make_unique<T>(block, parent).release();  // the caller owns it
}

struct TagRow {
    unsigned char tag;
    const char* name;
    CAsn1Object* (*create)(CAsn1Block* block, CAsn1Object* parent);
};

// clang-format off
constexpr TagRow kTags[] = {
    {kAsn1Boolean, "BOOLEAN", Create<CAsn1Boolean>},
    {kAsn1Integer, "INTEGER", Create<CAsn1Integer>},
    {kAsn1BitString, "BIT STRING", Create<CAsn1BitString>},
    {kAsn1OctetString, "OCTET STRING", Create<CAsn1OctetString>},
    {kAsn1Null, "NULL", Create<CAsn1Null>},
    {kAsn1ObjectIdentifier, "OBJECT IDENTIFIER", Create<CAsn1ObjectIdentifier>},
    {kAsn1Utf8String, "UTF8 STRING", Create<CAsn1UTF8String>},
    {kAsn1NumericString, "NUMERIC STRING", Create<CAsn1NumericString>},
    {kAsn1PrintableString, "PRINTABLE STRING", Create<CAsn1PrintableString>},
    {kAsn1TeletexString, "TELETEX STRING", Create<CAsn1TeletexString>},
    {kAsn1Ia5String, "IA5 STRING", Create<CAsn1IA5String>},
    {kAsn1UtcTime, "UTC TIME", Create<CAsn1UTCTime>},
    {kAsn1GeneralizedTime, "GENERALIZED TIME", Create<CAsn1GeneralizedTime>},
    {kAsn1UnicodeString, "UNICODE STRING", Create<CAsn1UnicodeString>},
    {kAsn1ConstructedOctetString, "", Create<CAsn1ContructedOctetString>},
    {kAsn1Sequence, "", Create<CAsn1Sequence>},
    {kAsn1Set, "", Create<CAsn1Set>},
};
// clang-format on
constexpr TagRow kUnknownTag = {0, "", Create<CAsn1Unknown>};

const TagRow& FindTag(unsigned char tag) noexcept {
    const auto* row = std::find_if(std::begin(kTags), std::end(kTags),
                                   [tag](const TagRow& r) { return r.tag == tag; });
    return row != std::end(kTags) ? *row : kUnknownTag;
}

}  // namespace

const char* Asn1TagName(unsigned char tag) noexcept {
    return FindTag(tag).name;
}

CAsn1Object* CreatePrimitiveObject(CAsn1Block* block, CAsn1Object* parent) {
    return FindTag(block->tag).create(block, parent);
}

void CAsn1Boolean::Decode() {
    const auto content = Content();
    m_value = !content.empty() && content[0] != 0;
}

std::wstring CAsn1Boolean::GetFormattedString([[maybe_unused]] unsigned int flags) const {
    return m_value ? L"True" : L"False";
}

void CAsn1Boolean::_Encode() {
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

std::span<unsigned char> CAsn1BitString::ClearUnusedBits(std::span<unsigned char> content) {
    if (content.size() < 2) {
        return {};
    }
    const unsigned unused = std::min<unsigned>(content[0], 8);
    content.back() = static_cast<unsigned char>(content.back() & 0xFFU << unused);
    return content.subspan(1);
}

void CAsn1BitString::Decode() {
    const auto content = Content();
    m_unusedBits = content.empty() ? 0 : content[0];
    const auto octets = ClearUnusedBits(content);
    m_value.assign(octets.begin(), octets.end());
}

std::wstring CAsn1BitString::GetFormattedString([[maybe_unused]] unsigned int flags) const {
    return CAsn1Integer::GetHexString(0, m_value.data(), static_cast<unsigned>(m_value.size()));
}

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
