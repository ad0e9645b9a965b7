#include "records/text/VisibleText.h"

#include "asn1/Charset.h"
#include "asn1/Elements.h"
#include "common/Encode.h"
#include "common/Hex.h"
#include "records/AnswerBudget.h"
#include "records/text/TeletexText.h"

#include <algorithm>
#include <array>

namespace {

using ca::Octets;

constexpr wchar_t kReplacement = 0xFFFD;
constexpr std::wstring_view kCut = L"\u2026";

std::wstring FromUtf8(Octets octets) {
    return ca::u8u16(std::string(octets.begin(), octets.end()));
}

// Strings of one octet a character hold UTF-8 as often as Latin-1 or T.61. What is UTF-8 by chance
// is hardly ever a text.
std::wstring FromOctets(Octets octets) {
    std::wstring text = FromUtf8(octets);
    return text.find(kReplacement) == std::wstring::npos ? text : ca::ReadTeletex(octets);
}

wchar_t CodePoint(std::uint32_t value) {
    // Halves of surrogate pairs stand for nothing alone.
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

// X.680 has only the basic plane there, but surrogate pairs are what writers put. An octet that is
// left over shows, so that a text which was cut does not read like a whole one.
std::wstring FromUcs2(Octets octets) {
    std::wstring text = ca::ReadUtf16(octets);
    if (octets.size() % 2 != 0) {
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

// True when the text, which begins with a backslash, would read as an escape there.
bool BeginsEscape(std::wstring_view text) {
    const bool isLong = text.size() > 1 && text[1] == L'U';
    const std::size_t digits = isLong ? 8 : 4;
    return text.size() >= 2 + digits && (isLong || text[1] == L'u') &&
           std::ranges::all_of(text.substr(2, digits), ca::IsHexDigit<wchar_t>);
}

// Appends a text, its hidden characters escaped, and a backslash where `isOdd` says so of what
// begins there; as much as a value may have.
template <class IsOdd>
void AppendSafely(std::wstring& out, std::wstring_view text, IsOdd isOdd) {
    const std::size_t end = out.size() + ca::MaxValueText();
    const auto isSpecial = [](wchar_t c) { return c == L'\\' || ca::IsHiddenCharacter(c); };
    while (!text.empty() && out.size() < end) {
        const std::wstring_view next = text.substr(0, end - out.size());
        const auto special = std::ranges::find_if(next, isSpecial);
        out.append(next.begin(), special);
        text.remove_prefix(static_cast<std::size_t>(special - next.begin()));
        if (special != next.end()) {
            if (*special != L'\\' || isOdd(text)) {
                ca::AppendEscape(out, *special);
            } else {
                out += *special;
            }
            text.remove_prefix(1);
        }
    }
    if (!text.empty()) {
        out += kCut;
    }
}

}  // namespace

namespace ca {

std::size_t MaxValueText() noexcept {
    // A character is four octets in memory, and takes part in several forms of a value.
    constexpr std::size_t kOctetsPerCharacter = 4 * sizeof(wchar_t);
    return std::min(kMaxValueText, CAnswerBudget::Left() / kOctetsPerCharacter);
}

void AppendVisible(std::wstring& out, std::wstring_view text) {
    AppendSafely(out, text, BeginsEscape);
}

std::wstring Visible(std::wstring_view text) {
    std::wstring out;
    AppendVisible(out, text);
    return out;
}

void AppendShown(std::wstring& out, std::wstring_view text) {
    AppendSafely(out, text, [](std::wstring_view) { return false; });
}

void AppendEscape(std::wstring& out, wchar_t c) {
    const auto code = static_cast<std::uint32_t>(c);
    const bool isLong = code > 0xFFFF;
    out += isLong ? L"\\U" : L"\\u";
    for (int shift = isLong ? 28 : 12; shift >= 0; shift -= 4) {
        out += static_cast<wchar_t>(HexDigit(code >> shift));
    }
}

bool ReadsAsOctets(std::wstring_view text) noexcept {
    return text.size() > 1 && text[0] == L'#' &&
           std::ranges::all_of(text.substr(1), IsHexDigit<wchar_t>);
}

std::wstring EscapeText(wchar_t c) {
    std::wstring out;
    AppendEscape(out, c);
    return out;
}

// A text may end with the mark of its own: only one that reached the limit was cut.
bool IsCut(std::wstring_view text) noexcept {
    return text.size() > MaxValueText() && text.ends_with(kCut);
}

void AppendHex(std::wstring& out, Octets octets) {
    const Octets shown = octets.first(std::min(octets.size(), MaxValueText() / 2));
    AddHex(shown, out);
    if (shown.size() < octets.size()) {
        out += kCut;
    }
}

std::wstring Hex(Octets octets) {
    std::wstring out;
    AppendHex(out, octets);
    return out;
}

std::wstring TextOf(const CAsn1Element& element) {
    switch (CharsetOf(element)) {
        case Charset::kUtf8:
            return FromUtf8(element.content);
        case Charset::kOctets:
            return FromOctets(element.content);
        case Charset::kUcs2:
            return FromUcs2(element.content);
        case Charset::kUcs4:
            return FromUcs4(element.content);
        case Charset::kNone:
            break;
    }
    return {};
}

std::wstring TextOf(const CAsn1Object& text) {
    return TextOf(ElementOf(text));
}

std::wstring ValueText(const CAsn1Element& element) {
    if (IsText(element)) {
        return ValueText(TextOf(element));
    }
    // "#" and the octets of the whole element, as RFC 4514, 2.4, has values that are not texts.
    std::wstring out = L"#";
    AppendHex(out, element.raw);
    return out;
}

std::wstring ValueText(const CAsn1Object& value) {
    return ValueText(ElementOf(value));
}

std::wstring ValueText(std::wstring_view text) {
    std::wstring out;
    // A text that begins as octets do must not read as some: its "#" is escaped.
    if (ReadsAsOctets(text)) {
        AppendEscape(out, text[0]);
        text.remove_prefix(1);
    }
    AppendVisible(out, text);
    return out;
}

std::string Base64Text(Octets octets) {
    std::string text;
    Base64Encode(octets.data(), static_cast<unsigned>(octets.size()), text);
    return text;
}

}  // namespace ca
