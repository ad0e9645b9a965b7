#include "common/Encode.h"
#include "common/UtfPaths.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <emmintrin.h>
#include <stdexcept>

// Both directions convert into a buffer on the stack and append it: the target is never filled with
// zeros first, which would be a good part of the time of a short text.
//
// Malformed input is replaced as the toolkit's string class does it, since texts meet there again:
// - a leading byte-order mark is dropped;
// - each octet that begins no well-formed sequence (RFC 3629) becomes one U+FFFD;
// - a pair of surrogates in UTF-32 is joined, a lone one becomes "?".
// Above U+10FFFF it would cut the value to 16 bits and go on; here such a value becomes U+FFFD.

namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;
constexpr std::uint32_t kByteOrderMark = 0xFEFF;
constexpr std::size_t kChunk = 512;  // code points converted before they are appended

using ca::utf::Octets;

template <class Char>
std::size_t LengthOf(const Char* text) {
    if (text == nullptr) {
        throw std::logic_error("basic_string: construction from null is not valid");
    }
    return std::char_traits<Char>::length(text);
}

// What the first octet of a sequence says: how many follow, the bits it brings, and the lowest code
// point that needs the length, below which the form is overlong.
struct Lead {
    std::size_t following;
    std::uint32_t bits;
    std::uint32_t lowest;
};

Lead ReadLead(std::uint32_t octet) {
    if ((octet & 0xE0) == 0xC0) {
        return {1, octet & 0x1F, 0x80};
    }
    if ((octet & 0xF0) == 0xE0) {
        return {2, octet & 0x0F, 0x800};
    }
    if ((octet & 0xF8) == 0xF0) {
        return {3, octet & 0x07, 0x10000};
    }
    return {};
}

bool IsSurrogate(std::uint32_t code) {
    return (code & 0xFFFFF800) == 0xD800;
}

// One code point at `in`, which it moves on.
std::uint32_t DecodeOne(Octets& in, Octets end) {
    const std::uint32_t first = *in++;
    if (first < 0x80) {
        return first;
    }
    const Lead lead = ReadLead(first);
    if (lead.following == 0 || static_cast<std::size_t>(end - in) < lead.following) {
        return kReplacement;
    }
    std::uint32_t code = lead.bits;
    for (std::size_t i = 0; i < lead.following; ++i) {
        if ((in[i] & 0xC0) != 0x80) {
            return kReplacement;
        }
        code = code << 6 | (in[i] & 0x3F);
    }
    if (code < lead.lowest || code > 0x10FFFF || IsSurrogate(code)) {
        return kReplacement;
    }
    in += lead.following;
    return code;
}

// True for a whole block of ASCII.
bool BeginsWithAscii(Octets in, Octets end) {
    static_assert(ca::utf::kBlock == sizeof(std::uint64_t));
    std::uint64_t block = 0;
    if (static_cast<std::size_t>(end - in) < sizeof block) {
        return false;
    }
    std::memcpy(&block, in, sizeof block);
    return (block & 0x8080808080808080) == 0;
}

// The code point at `in`, which it moves on; surrogates are joined.
std::uint32_t JoinOne(const wchar_t*& in, const wchar_t* end) {
    const auto code = static_cast<std::uint32_t>(*in++);
    if (code > 0x10FFFF) {
        return kReplacement;
    }
    if (!IsSurrogate(code)) {
        return code;
    }
    const std::uint32_t next = in != end ? static_cast<std::uint32_t>(*in) : 0;
    if (code >= 0xDC00 || (next & 0xFFFFFC00) != 0xDC00) {
        return '?';
    }
    ++in;
    return 0x10000 + ((code & 0x3FF) << 10) + (next & 0x3FF);
}

char* EncodeOne(std::uint32_t code, char* out) {
    const auto put = [&out](std::uint32_t octet) { *out++ = static_cast<char>(octet); };
    if (code < 0x80) {
        put(code);
        return out;
    }
    if (code < 0x800) {
        put(0xC0 | code >> 6);
    } else if (code < 0x10000) {
        put(0xE0 | code >> 12);
        put(0x80 | (code >> 6 & 0x3F));
    } else {
        put(0xF0 | code >> 18);
        put(0x80 | (code >> 12 & 0x3F));
        put(0x80 | (code >> 6 & 0x3F));
    }
    put(0x80 | (code & 0x3F));
    return out;
}

const ca::utf::Path chosenPath = ca::utf::BestPath();

const wchar_t* BehindMark(const wchar_t* in, const wchar_t* end) {
    return in != end && static_cast<std::uint32_t>(*in) == kByteOrderMark ? in + 1 : in;
}

// Converts until `out` reaches `full`, after which it may write kNarrowSlack octets.
char* NarrowUpTo(const wchar_t*& in, const wchar_t* end, char* out, const char* full,
                 ca::utf::Path path) {
    while (in != end && out < full) {
        if (path == ca::utf::Path::kVector) {
            ca::utf::NarrowBlocks(in, end, out, full);
        }
        for (std::size_t i = 0; i < ca::utf::kBlock && in != end; ++i) {
            out = EncodeOne(JoinOne(in, end), out);
        }
    }
    return out;
}

}  // namespace

namespace ca::utf {

void Widen(const char* text, std::size_t length, std::wstring& out, Path path) {
    const std::string_view shown = ca::WithoutByteOrderMark({text, length});
    const auto* in = reinterpret_cast<Octets>(shown.data());
    const Octets end = in + shown.size();
    if (length > kChunk) {  // one piece allocates its exact size anyway
        const auto begins = [](unsigned char octet) { return (octet & 0xC0) != 0x80; };
        out.reserve(static_cast<std::size_t>(std::count_if(in, end, begins)));
    }
    wchar_t buffer[kChunk + kWidenLoad + kBlock];  // a step of each kind may begin just below it
    while (in != end) {
        wchar_t* to = buffer;
        while (in != end && to < buffer + kChunk) {
            if (path == Path::kVector) {
                WidenBlocks(in, end, to, buffer + kChunk);
            }
            // What stopped the blocks, and what is too short for one.
            if (BeginsWithAscii(in, end)) {
                to = std::copy_n(in, kBlock, to);
                in += kBlock;
                continue;
            }
            for (std::size_t i = 0; i < kBlock && in != end; ++i) {
                *to++ = static_cast<wchar_t>(DecodeOne(in, end));
            }
        }
        out.append(buffer, to);
    }
}

void Narrow(const wchar_t* text, std::size_t length, std::string& out, Path path) {
    const wchar_t* const end = text + length;
    const wchar_t* in = BehindMark(text, end);
    char buffer[kChunk * kMaxSequence + kNarrowSlack];
    while (in != end) {
        out.append(buffer, NarrowUpTo(in, end, buffer, buffer + kChunk * kMaxSequence, path));
    }
}

char* NarrowShort(const wchar_t* text, std::size_t length, char* out) {
    const wchar_t* const end = text + length;
    const wchar_t* in = BehindMark(text, end);
    return NarrowUpTo(in, end, out, out + kShortText * kMaxSequence, chosenPath);
}

}  // namespace ca::utf

namespace ca {

void u8u16(const char* text, std::wstring& out) {
    out.clear();
    utf::Widen(text, LengthOf(text), out, chosenPath);
}

std::wstring u8u16(const std::string& text) {
    std::wstring out;
    utf::Widen(text.data(), text.size(), out, chosenPath);
    return out;
}

void u16u8(const wchar_t* text, std::string& out) {
    out.clear();
    utf::Narrow(text, LengthOf(text), out, chosenPath);
}

std::string u16u8(const std::wstring& text) {
    std::string out;
    utf::Narrow(text.data(), LengthOf(text.c_str()), out, chosenPath);
    return out;
}

std::wstring ReadUtf16(std::span<const unsigned char> octets) {
    const auto unitAt = [octets](std::size_t i) {
        return static_cast<std::uint32_t>(octets[i] << 8 | octets[i + 1]);
    };
    std::wstring text;
    text.reserve(octets.size() / 2);
    for (std::size_t i = 0; i + 1 < octets.size(); i += 2) {
        const std::uint32_t unit = unitAt(i);
        if (!IsSurrogate(unit)) {
            text += static_cast<wchar_t>(unit);
            continue;
        }
        const bool isHigh = unit < 0xDC00;
        const std::uint32_t low = isHigh && i + 3 < octets.size() ? unitAt(i + 2) : 0;
        if ((low & 0xFC00) == 0xDC00) {
            text += static_cast<wchar_t>(0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00));
            i += 2;
        } else {
            text += wchar_t{kReplacement};
        }
    }
    return text;
}

std::string PathFromWString(const std::wstring& path) {
    return u16u8(path);
}

std::wstring PathToWString(const std::string& path) {
    return u8u16(path);
}

}  // namespace ca

std::string CW2A(const wchar_t* text) {
    std::string out;
    ca::u16u8(text, out);
    return out;
}
