#include "records/text/VisibleText.h"

#include "common/Encode.h"
#include "records/AnswerBudget.h"
#include "records/text/Elements.h"

#include <algorithm>
#include <array>

namespace {

using ca::Octets;

constexpr wchar_t kHexDigits[] = L"0123456789abcdef";
constexpr wchar_t kReplacement = 0xFFFD;
constexpr std::wstring_view kCut = L"\u2026";

enum class Charset : unsigned char { kNone, kUtf8, kTeletex, kUcs2, kUcs4 };

// Universal string types by identifier octet (X.680 8.4); the ASCII subsets read as UTF-8.
constexpr std::array<Charset, 0x1F> kCharsets = [] {
    std::array<Charset, 0x1F> sets{};
    for (const int tag : {0x0C, 0x12, 0x13, 0x16, 0x19, 0x1A, 0x1B}) {
        sets[static_cast<std::size_t>(tag)] = Charset::kUtf8;
    }
    sets[0x14] = Charset::kTeletex;
    sets[0x1C] = Charset::kUcs4;
    sets[0x1E] = Charset::kUcs2;
    return sets;
}();

Charset CharsetOf(const CAsn1Element& element) noexcept {
    return element.tag < kCharsets.size() ? kCharsets[element.tag] : Charset::kNone;
}

std::wstring FromUtf8(Octets octets) {
    return ca::u8u16(std::string(octets.begin(), octets.end()));
}

std::wstring FromTeletex(Octets octets) {
    std::wstring text = FromUtf8(octets);
    if (text.find(kReplacement) != std::wstring::npos) {
        text.assign(octets.begin(), octets.end());
    }
    return text;
}

wchar_t CodePoint(std::uint32_t value) {
    const bool isValid = value < 0xD800 || (value > 0xDFFF && value <= 0x10FFFF);
    return isValid ? static_cast<wchar_t>(value) : kReplacement;
}

std::uint32_t BigEndian(Octets octets) {
    std::uint32_t value = 0;
    for (const unsigned char octet : octets) {
        value = (value << 8) | octet;
    }
    return value;
}

// UTF-16 although X.680 has only the basic plane there: surrogate pairs are what writers put.
std::wstring FromUcs2(Octets octets) {
    std::wstring text;
    text.reserve(octets.size() / 2);
    std::size_t i = 0;
    while (i + 2 <= octets.size()) {
        std::uint32_t value = BigEndian(octets.subspan(i, 2));
        i += 2;
        if (value >= 0xD800 && value < 0xDC00 && i + 2 <= octets.size()) {
            const std::uint32_t low = BigEndian(octets.subspan(i, 2));
            if (low >= 0xDC00 && low < 0xE000) {
                value = 0x10000 + ((value - 0xD800) << 10) + (low - 0xDC00);
                i += 2;
            }
        }
        text += CodePoint(value);
    }
    if (i < octets.size()) {
        text += kReplacement;
    }
    return text;
}

std::wstring FromUcs4(Octets octets) {
    std::wstring text;
    text.reserve(octets.size() / 4 + 1);
    std::size_t i = 0;
    for (; i + 4 <= octets.size(); i += 4) {
        text += CodePoint(BigEndian(octets.subspan(i, 4)));
    }
    if (i < octets.size()) {
        text += kReplacement;
    }
    return text;
}

}  // namespace

namespace ca {

std::size_t MaxValueText() noexcept {
    constexpr std::size_t kOctetsPerCharacter = 4 * sizeof(wchar_t);
    return std::min(kMaxValueText, CAnswerBudget::Left() / kOctetsPerCharacter);
}

void AppendVisible(std::wstring& out, std::wstring_view text) {
    const std::size_t end = out.size() + MaxValueText();
    while (!text.empty() && out.size() < end) {
        const std::wstring_view next = text.substr(0, end - out.size());
        const auto hidden = std::ranges::find_if(next, IsHiddenCharacter);
        out.append(next.begin(), hidden);
        text.remove_prefix(static_cast<std::size_t>(hidden - next.begin()));
        if (hidden != next.end()) {
            out += L"\\u";
            for (int shift = 12; shift >= 0; shift -= 4) {
                out += kHexDigits[(static_cast<std::uint32_t>(*hidden) >> shift) & 0xF];
            }
            text.remove_prefix(1);
        }
    }
    if (!text.empty()) {
        out += kCut;
    }
}

std::wstring Visible(std::wstring_view text) {
    std::wstring out;
    AppendVisible(out, text);
    return out;
}

void AppendHex(std::wstring& out, Octets octets) {
    const Octets shown = octets.first(std::min(octets.size(), MaxValueText() / 2));
    std::size_t place = out.size();
    out.resize(place + 2 * shown.size());
    for (const unsigned char octet : shown) {
        out[place++] = kHexDigits[octet >> 4];
        out[place++] = kHexDigits[octet & 0xF];
    }
    if (shown.size() < octets.size()) {
        out += kCut;
    }
}

std::wstring Hex(Octets octets) {
    std::wstring out;
    AppendHex(out, octets);
    return out;
}

bool IsText(const CAsn1Element& element) noexcept {
    return CharsetOf(element) != Charset::kNone;
}

std::wstring TextOf(const CAsn1Element& element) {
    switch (CharsetOf(element)) {
        case Charset::kUtf8:
            return FromUtf8(element.content);
        case Charset::kTeletex:
            return FromTeletex(element.content);
        case Charset::kUcs2:
            return FromUcs2(element.content);
        case Charset::kUcs4:
            return FromUcs4(element.content);
        case Charset::kNone:
            break;
    }
    return {};
}

std::wstring ValueText(const CAsn1Element& element) {
    if (IsText(element)) {
        return Visible(TextOf(element));
    }
    std::wstring out = L"#";
    AppendHex(out, element.raw);
    return out;
}

std::string Base64Text(Octets octets) {
    std::string text;
    Base64Encode(octets.data(), static_cast<unsigned>(octets.size()), text);
    return text;
}

}  // namespace ca
