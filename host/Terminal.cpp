#include "host/Terminal.h"

#include "common/Encode.h"
#include "common/HiddenCharacters.h"

#include <array>
#include <cstdio>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace {

struct Range {
    wchar_t first;
    wchar_t last;
};

// East Asian wide and full-width blocks (Unicode Standard Annex 11), pictographs included.
constexpr Range kWide[] = {
    {0x1100, 0x115F}, {0x2E80, 0x303E}, {0x3041, 0xA4CF}, {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},
    {0xFE30, 0xFE6F}, {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}, {0x1F300, 0x1FAFF}, {0x20000, 0x3FFFD}};

// Blocks of marks that are drawn onto the character before them.
constexpr Range kCombining[] = {{0x0300, 0x036F}, {0x0483, 0x0489}, {0x1AB0, 0x1AFF},
                                {0x1DC0, 0x1DFF}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F},
                                {0xFE20, 0xFE2F}};

template <std::size_t Count>
bool IsIn(const Range (&ranges)[Count], wchar_t c) {
    for (const Range& range : ranges) {
        if (c >= range.first && c <= range.last) {
            return true;
        }
    }
    return false;
}

std::size_t WidthOf(wchar_t c) {
    // Nearly every character of a text: neither table begins below it.
    // Two look-ups a character are only worth it past them.
    if (c < 0x0300) {
        return 1;
    }
    if (IsIn(kCombining, c)) {
        return 0;
    }
    return IsIn(kWide, c) ? 2 : 1;
}

// The character that begins at `at` of valid UTF-8, which is moved after it.
wchar_t NextCharacter(std::string_view utf8, std::size_t& at) {
    const auto first = static_cast<unsigned char>(utf8[at++]);
    unsigned value = first < 0x80U   ? first
                     : first < 0xE0U ? first & 0x1FU
                     : first < 0xF0U ? first & 0x0FU
                                     : first & 0x07U;
    while (at < utf8.size() && (static_cast<unsigned char>(utf8[at]) & 0xC0U) == 0x80U) {
        value = value << 6U | (static_cast<unsigned char>(utf8[at++]) & 0x3FU);
    }
    return static_cast<wchar_t>(value);
}

void AppendEscape(std::string& json, unsigned unit) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "\\u%04X", unit & 0xFFFFU);
    json += text.data();
}

void AppendEscaped(std::string& json, wchar_t c) {
    const auto value = static_cast<unsigned>(c);
    // JSON names UTF-16 units: two surrogates of a character past the first plane (RFC 8259, 7).
    if (value > 0xFFFFU) {
        AppendEscape(json, 0xD7C0U + (value >> 10U));
        AppendEscape(json, 0xDC00U + (value & 0x3FFU));
    } else {
        AppendEscape(json, value);
    }
}

constexpr char kDelete = '\x7F';

constexpr std::wstring_view kCut = L"...";

}  // namespace

namespace host {

bool IsTerminal(int descriptor) {
    return ::isatty(descriptor) == 1;
}

std::size_t TerminalWidth(int descriptor, std::size_t fallback) {
    winsize size{};
    if (!IsTerminal(descriptor) || ::ioctl(descriptor, TIOCGWINSZ, &size) != 0 ||
        size.ws_col == 0) {
        return fallback;
    }
    return size.ws_col;
}

std::wstring Harmless(std::wstring_view text) {
    // A dot for each: the width stays what it was.
    std::wstring visible(text);
    for (wchar_t& c : visible) {
        if (ca::IsHiddenCharacter(c)) {
            c = L'.';
        }
    }
    return visible;
}

std::string Harmless(const std::string& utf8) {
    return ca::u16u8(Harmless(ca::u8u16(utf8)));
}

std::string EscapeHidden(std::string json) {
    // Copied from the first hidden character on: most texts have none and stay as they are.
    std::string escaped;
    std::size_t copied = 0;
    for (std::size_t at = 0; at < json.size();) {
        const char first = json[at];
        // JSON escapes the control characters below the blank itself; DEL it does not.
        if (static_cast<signed char>(first) >= 0 && first != kDelete) {
            ++at;
            continue;
        }
        const std::size_t start = at;
        if (const wchar_t c = NextCharacter(json, at); ca::IsHiddenCharacter(c)) {
            escaped.append(json, copied, start - copied);
            AppendEscaped(escaped, c);
            copied = at;
        }
    }
    return copied == 0 ? std::move(json) : escaped.append(json, copied);
}

std::size_t DisplayWidth(std::wstring_view text) {
    std::size_t width = 0;
    for (const wchar_t c : text) {
        width += WidthOf(c);
    }
    return width;
}

std::wstring CutToWidth(std::wstring_view text, std::size_t columns) {
    std::size_t width = 0;
    std::size_t kept = 0;  // characters that leave room for the mark of the cut
    // The mark of the cut has to fit, too.
    for (std::size_t i = 0; i < text.size(); ++i) {
        width += WidthOf(text[i]);
        if (width > columns) {
            const std::size_t mark = kCut.size() < columns ? kCut.size() : columns;
            return std::wstring(text.substr(0, kept)).append(kCut.substr(0, mark));
        }
        if (width + kCut.size() <= columns) {
            kept = i + 1;
        }
    }
    return std::wstring(text);
}

}  // namespace host
