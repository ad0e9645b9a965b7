#include "asn1/Asn1Strings.h"

#include "asn1/Asn1Text.h"
#include "common/Encode.h"

#include <algorithm>
#include <vector>

namespace {

std::string ContentText(std::span<const unsigned char> content) {
    return {content.begin(), content.end()};
}

}  // namespace

void CAsn1BaseString::Decode() {
    m_text = ca::u8u16(ContentText(Content()));
}

std::wstring CAsn1BaseString::GetFormattedString([[maybe_unused]] unsigned int flags) const {
    return m_text;
}

void CAsn1BaseString::_Encode() {
    const std::string text = ca::u16u8(m_text);
    SetContent({text.begin(), text.end()});
}

void CAsn1BaseString::SetValue(std::wstring text) {
    m_text = std::move(text);
    SetChanged(true);
}

void CAsn1TeletexString::Decode() {
    std::string text = ContentText(Content());
    // 0xC2 is the acute accent of T.61, which stands before its letter.
    std::replace(text.begin(), text.end(), '\xC2', '\'');
    StoreText(ca::u8u16(text));
}

void CAsn1UnicodeString::Decode() {
    StoreText(ca::ReadUtf16(Content()));
}

void CAsn1UnicodeString::_Encode() {
    std::vector<unsigned char> content;
    const auto append = [&content](std::uint32_t unit) {
        content.push_back(static_cast<unsigned char>(unit >> 8));
        content.push_back(static_cast<unsigned char>(unit));
    };
    for (const wchar_t c : GetValue()) {
        // A character past 16 bits becomes a pair of surrogates, which ReadUtf16() joins again.
        const auto point = static_cast<std::uint32_t>(c);
        if (point < 0x10000) {
            append(point);
        } else {
            append(0xD800 + ((point - 0x10000) >> 10 & 0x3FF));
            append(0xDC00 + (point & 0x3FF));
        }
    }
    SetContent(std::move(content));
}
