#include "common/JsonString.h"

#include "common/Encode.h"
#include "common/UtfPaths.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <emmintrin.h>
#include <optional>
#include <string_view>

namespace {

constexpr std::size_t kBlock = 16;  // code points that a step takes

bool IsEscaped(char c) {
    return c == '"' || c == '\\' || c == '\n';
}

__m128i Load(const char* octets) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(octets));
}

void Store(char* out, __m128i octets) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), octets);
}

__m128i Equals(__m128i octets, char c) {
    return _mm_cmpeq_epi8(octets, _mm_set1_epi8(c));
}

__m128i Quoted(__m128i octets) {
    return _mm_or_si128(Equals(octets, '"'), Equals(octets, '\\'));
}

unsigned Mask(__m128i octets) {
    return static_cast<unsigned>(_mm_movemask_epi8(octets));
}

unsigned EscapedMask(__m128i octets) {
    return Mask(_mm_or_si128(Quoted(octets), Equals(octets, '\n')));
}

char* Escape(char c, char* out) {
    *out++ = '\\';
    *out++ = c == '\n' ? 'n' : c;
    return out;
}

// `out` has room for the text and an octet more for each one that is escaped.
void CopyEscaped(std::string_view text, char* out) {
    while (text.size() >= kBlock) {
        const __m128i octets = Load(text.data());
        const unsigned escaped = EscapedMask(octets);
        Store(out, octets);  // what is wrong of it is written again
        const auto plain = static_cast<std::size_t>(escaped != 0 ? std::countr_zero(escaped) : 16);
        out += plain;
        text.remove_prefix(plain);
        if (escaped != 0) {
            out = Escape(text.front(), out);
            text.remove_prefix(1);
        }
    }
    for (const char c : text) {
        if (IsEscaped(c)) {
            out = Escape(c, out);
        } else {
            *out++ = c;
        }
    }
}

// A block as octets. Packing saturates: what is not ASCII stays below ' ' or becomes negative.
__m128i NarrowBlock(const wchar_t* text) {
    const auto* lanes = reinterpret_cast<const __m128i*>(text);
    return _mm_packus_epi16(
        _mm_packs_epi32(_mm_loadu_si128(lanes), _mm_loadu_si128(lanes + 1)),
        _mm_packs_epi32(_mm_loadu_si128(lanes + 2), _mm_loadu_si128(lanes + 3)));
}

// A text shorter than a block, filled with blanks.
__m128i NarrowShort(std::wstring_view text) {
    std::array<wchar_t, kBlock> block;
    block.fill(L' ');
    std::ranges::copy(text, block.begin());
    return NarrowBlock(block.data());
}

// Not zero where an octet does not stand in JSON as it is.
__m128i SpecialOctets(__m128i octets) {
    return _mm_or_si128(Quoted(octets), _mm_cmpgt_epi8(_mm_set1_epi8(' '), octets));
}

bool IsPlain(__m128i special) {
    return Mask(special) == 0;
}

// Of a block at least. The last step may take again what the one before it took.
bool IsPlain(std::wstring_view text) {
    const wchar_t* last = text.data() + text.size() - kBlock;
    __m128i special = SpecialOctets(NarrowBlock(last));
    for (const wchar_t* at = text.data(); at < last; at += kBlock) {
        special = _mm_or_si128(special, SpecialOctets(NarrowBlock(at)));
    }
    return IsPlain(special);
}

void CopyPlain(std::wstring_view text, char* out) {
    const std::size_t last = text.size() - kBlock;
    for (std::size_t at = 0; at < last; at += kBlock) {
        Store(out + at, NarrowBlock(text.data() + at));
    }
    Store(out + last, NarrowBlock(text.data() + last));
}

// Writes the text if it is plain.
bool WritePlain(ca::JsonWriter& writer, std::wstring_view text) {
    if (text.size() >= kBlock) {
        const bool isPlain = IsPlain(text);
        if (isPlain) {
            CopyPlain(text, writer.PlainString(text.size()));
        }
        return isPlain;
    }
    const __m128i octets = NarrowShort(text);
    const bool isPlain = IsPlain(SpecialOctets(octets));
    if (isPlain) {
        std::memcpy(writer.PlainString(text.size()), &octets, text.size());
    }
    return isPlain;
}

// Controls that are escaped by a number.
unsigned OddMask(__m128i octets) {
    const __m128i isControl = _mm_cmpeq_epi8(_mm_min_epu8(octets, _mm_set1_epi8(0x1F)), octets);
    return Mask(_mm_andnot_si128(Equals(octets, '\n'), isControl));
}

// How many octets are escaped by one letter; none when some take more than that.
std::optional<std::size_t> CountEscapes(std::string_view utf8) {
    std::size_t escapes = 0;
    unsigned odd = 0;
    const auto count = [&](__m128i octets) {
        odd |= OddMask(octets);
        if (const unsigned escaped = EscapedMask(octets); escaped != 0) {
            escapes += static_cast<std::size_t>(std::popcount(escaped));
        }
    };
    for (; utf8.size() >= kBlock; utf8.remove_prefix(kBlock)) {
        count(Load(utf8.data()));
    }
    std::array<char, kBlock> last;
    last.fill(' ');
    std::ranges::copy(utf8, last.begin());
    count(Load(last.data()));
    return odd == 0 ? std::optional(escapes) : std::nullopt;
}

// The writer's own way goes octet by octet and looks each one up.
void WriteUtf8(ca::JsonWriter& writer, std::string_view utf8) {
    if (const std::optional<std::size_t> escapes = CountEscapes(utf8)) {
        CopyEscaped(utf8, writer.PlainString(utf8.size() + *escapes));
    } else {
        writer.String(utf8.data(), static_cast<rapidjson::SizeType>(utf8.size()));
    }
}

}  // namespace

namespace ca {

// Most texts are plain, and most others short.
void WriteString(JsonWriter& writer, const std::wstring& text) {
    if (WritePlain(writer, text)) {
        return;
    }
    if (text.size() > utf::kShortText) {
        WriteUtf8(writer, u16u8(text));
        return;
    }
    const std::wstring_view upToNul(text.c_str());  // as u16u8() reads it
    char utf8[utf::kShortRoom];
    const char* const end = utf::NarrowShort(upToNul.data(), upToNul.size(), utf8);
    WriteUtf8(writer, {utf8, static_cast<std::size_t>(end - utf8)});
}

void WriteString(JsonWriter& writer, const std::string& utf8) {
    WriteUtf8(writer, utf8);
}

}  // namespace ca
