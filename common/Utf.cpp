#include "common/Encode.h"

#include <algorithm>
#include <bit>
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
constexpr std::size_t kChunk = 512;      // code points converted before they are appended
constexpr std::size_t kMaxSequence = 4;  // octets of one code point

using Octets = const unsigned char*;

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

constexpr std::size_t kOctetsAtOnce = 16;
constexpr std::size_t kWideAtOnce = 8;

// How many 16-bit lanes, from the first, hold all ones.
std::size_t LeadingLanes(__m128i lanes) {
    return static_cast<std::size_t>(
               std::countr_one(static_cast<unsigned>(_mm_movemask_epi8(lanes)))) /
           2;
}

template <class Char>
__m128i LoadUnaligned(const Char* in) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
}

template <class Char>
void StoreUnaligned(Char* out, __m128i value) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), value);
}

// Stores eight 16-bit values as code points.
void StoreWide(wchar_t* out, __m128i values) {
    StoreUnaligned(out, _mm_unpacklo_epi16(values, _mm_setzero_si128()));
    StoreUnaligned(out + 4, _mm_unpackhi_epi16(values, _mm_setzero_si128()));
}

// The two runs below read sixteen octets, store code points for all of them and move on by those
// that are of their kind; they return false when the first is not.

bool TakeAscii(Octets& in, wchar_t*& out) {
    const __m128i octets = LoadUnaligned(in);
    const auto others = static_cast<unsigned>(_mm_movemask_epi8(octets));
    const int count = std::countr_zero(others | 1U << kOctetsAtOnce);
    if (count == 0) {
        return false;
    }
    StoreWide(out, _mm_unpacklo_epi8(octets, _mm_setzero_si128()));
    StoreWide(out + 8, _mm_unpackhi_epi8(octets, _mm_setzero_si128()));
    in += count;
    out += count;
    return true;
}

// Sequences of two octets: Cyrillic, Greek and their like.
bool TakePairs(Octets& in, wchar_t*& out) {
    const __m128i octets = LoadUnaligned(in);
    const __m128i marks = _mm_and_si128(octets, _mm_set1_epi16(static_cast<short>(0xC0E0)));
    const __m128i formed = _mm_cmpeq_epi16(marks, _mm_set1_epi16(static_cast<short>(0x80C0)));
    const __m128i high = _mm_slli_epi16(_mm_and_si128(octets, _mm_set1_epi16(0x1F)), 6);
    const __m128i low = _mm_and_si128(_mm_srli_epi16(octets, 8), _mm_set1_epi16(0x3F));
    const __m128i codes = _mm_or_si128(high, low);
    const __m128i shortest = _mm_cmpgt_epi16(codes, _mm_set1_epi16(0x7F));
    const std::size_t count = LeadingLanes(_mm_and_si128(formed, shortest));
    if (count == 0) {
        return false;
    }
    StoreWide(out, codes);
    in += 2 * count;
    out += count;
    return true;
}

void AppendWide(Octets in, Octets end, std::wstring& out) {
    wchar_t buffer[kChunk + kOctetsAtOnce];
    while (in != end) {
        wchar_t* to = buffer;
        while (in != end && to < buffer + kChunk) {
            const bool wide = static_cast<std::size_t>(end - in) >= kOctetsAtOnce;
            if (!wide || !(TakeAscii(in, to) || TakePairs(in, to))) {
                *to++ = static_cast<wchar_t>(DecodeOne(in, end));
            }
        }
        out.append(buffer, to);
    }
}

void DecodeText(const char* text, std::size_t length, std::wstring& out) {
    out.clear();
    if (length >= 3 && std::memcmp(text, "\xEF\xBB\xBF", 3) == 0) {
        text += 3;
        length -= 3;
    }
    const auto* const in = reinterpret_cast<Octets>(text);
    const Octets end = in + length;
    if (length > kChunk) {  // one piece allocates its exact size anyway
        const auto begins = [](unsigned char octet) { return (octet & 0xC0) != 0x80; };
        out.reserve(static_cast<std::size_t>(std::count_if(in, end, begins)));
    }
    AppendWide(in, end, out);
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

// Reads eight code points, stores all that are below U+0800 and moves on by a run of either ASCII
// or sequences of two octets; false when the first is above.
bool TakeNarrow(const wchar_t*& in, char*& out) {
    // Packing saturates: what does not fit stays outside of both ranges.
    const __m128i codes = _mm_packs_epi32(LoadUnaligned(in), LoadUnaligned(in + 4));
    const __m128i zero = _mm_setzero_si128();
    const __m128i ascii = _mm_cmpeq_epi16(_mm_srli_epi16(codes, 7), zero);
    const std::size_t single = LeadingLanes(ascii);
    if (single != 0) {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(out), _mm_packus_epi16(codes, codes));
        in += single;
        out += single;
        return true;
    }
    const __m128i narrow = _mm_cmpeq_epi16(_mm_srli_epi16(codes, 11), zero);
    const std::size_t pairs = LeadingLanes(_mm_andnot_si128(ascii, narrow));
    const __m128i low = _mm_slli_epi16(_mm_and_si128(codes, _mm_set1_epi16(0x3F)), 8);
    const __m128i bits = _mm_or_si128(_mm_srli_epi16(codes, 6), low);
    StoreUnaligned(out, _mm_or_si128(bits, _mm_set1_epi16(static_cast<short>(0x80C0))));
    in += pairs;
    out += 2 * pairs;
    return pairs != 0;
}

void AppendNarrow(const wchar_t* in, const wchar_t* end, std::string& out) {
    constexpr std::size_t kRoom = kChunk * kMaxSequence;
    char buffer[kRoom + 2 * kWideAtOnce];
    while (in != end) {
        char* to = buffer;
        while (in != end && to <= buffer + kRoom - kMaxSequence) {
            const bool wide = static_cast<std::size_t>(end - in) >= kWideAtOnce;
            if (!wide || !TakeNarrow(in, to)) {
                to = EncodeOne(JoinOne(in, end), to);
            }
        }
        out.append(buffer, to);
    }
}

void EncodeText(const wchar_t* in, std::size_t length, std::string& out) {
    out.clear();
    const wchar_t* const end = in + length;
    if (length != 0 && static_cast<std::uint32_t>(*in) == kByteOrderMark) {
        ++in;
    }
    AppendNarrow(in, end, out);
}

}  // namespace

namespace ca {

void u8u16(const char* text, std::wstring& out) {
    DecodeText(text, LengthOf(text), out);
}

std::wstring u8u16(const std::string& text) {
    std::wstring out;
    DecodeText(text.data(), text.size(), out);
    return out;
}

void u16u8(const wchar_t* text, std::string& out) {
    EncodeText(text, LengthOf(text), out);
}

std::string u16u8(const std::wstring& text) {
    std::string out;
    EncodeText(text.data(), LengthOf(text.c_str()), out);
    return out;
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
