#include "host/Terminal.h"

#include "common/Encode.h"

#include <cstdlib>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

struct Range {
    wchar_t first;
    wchar_t last;
};

// Controls, the marks that change the direction of text, separators, the byte-order mark.
constexpr Range kHidden[] = {
    {0x0000, 0x001F}, {0x007F, 0x009F}, {0x061C, 0x061C}, {0x200B, 0x200F}, {0x2028, 0x202E},
    {0x2060, 0x206F}, {0xD800, 0xDFFF}, {0xFEFF, 0xFEFF}, {0xFFF0, 0xFFFB}, {0xE0000, 0xE0FFF}};

// East Asian wide and full-width blocks (Unicode Standard Annex 11), pictographs included.
constexpr Range kWide[] = {
    {0x1100, 0x115F}, {0x2E80, 0x303E}, {0x3041, 0xA4CF}, {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},
    {0xFE30, 0xFE6F}, {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}, {0x1F300, 0x1FAFF}, {0x20000, 0x3FFFD}};

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
    if (c < 0x0300) {
        return 1;
    }
    if (IsIn(kCombining, c)) {
        return 0;
    }
    return IsIn(kWide, c) ? 2 : 1;
}

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

std::wstring Visible(std::wstring_view text) {
    std::wstring visible(text);
    for (wchar_t& c : visible) {
        if (c < 0 || c > 0x10FFFF || IsIn(kHidden, c)) {
            c = L'.';
        }
    }
    return visible;
}

std::string Visible(const std::string& utf8) {
    return ca::u16u8(Visible(ca::u8u16(utf8)));
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
