#include "common/UtfPaths.h"

#include <array>
#include <bit>
#include <cstdint>
#include <immintrin.h>

// Only these functions are compiled for more than the baseline, so that the rest runs anywhere.
#define CA_VECTOR __attribute__((target("ssse3,popcnt")))

// A step has no branch that depends on where letters of one and of two octets change: every lane is
// converted as if it began a letter, then a shuffle by a bit mask moves those that count together.

namespace {

using ca::utf::kBlock;
using ca::utf::kWidenLoad;
using ca::utf::Octets;

struct alignas(16) Shuffle {
    std::array<std::uint8_t, 16> from{};
};

using ShuffleTable = std::array<Shuffle, 256>;

// By mask, of 16-bit lanes: both octets of lanes whose bit is set, the first one or none of others.
constexpr ShuffleTable MakeShuffles(std::size_t octetsOfOthers) {
    ShuffleTable table{};
    for (std::size_t mask = 0; mask < table.size(); ++mask) {
        std::size_t to = 0;
        for (std::size_t lane = 0; lane < kBlock; ++lane) {
            const std::size_t octets = (mask >> lane & 1) != 0 ? 2 : octetsOfOthers;
            for (std::size_t octet = 0; octet < octets; ++octet) {
                table[mask].from[to++] = static_cast<std::uint8_t>(2 * lane + octet);
            }
        }
    }
    return table;
}

constexpr ShuffleTable kKeepMarked = MakeShuffles(0);
constexpr ShuffleTable kKeepPairs = MakeShuffles(1);

template <class Char>
CA_VECTOR __m128i Load(const Char* in) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
}

template <class Char>
CA_VECTOR void Store(Char* out, __m128i value) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), value);
}

CA_VECTOR __m128i Apply(const ShuffleTable& table, unsigned mask, __m128i lanes) {
    return _mm_shuffle_epi8(lanes, Load(table[mask].from.data()));
}

CA_VECTOR __m128i Choose(__m128i which, __m128i yes, __m128i no) {
    return _mm_or_si128(_mm_and_si128(which, yes), _mm_andnot_si128(which, no));
}

CA_VECTOR __m128i AllOctets(int value) {
    return _mm_set1_epi8(static_cast<char>(value));
}

CA_VECTOR __m128i AllLanes(int value) {
    return _mm_set1_epi16(static_cast<short>(value));
}

CA_VECTOR unsigned Mask(__m128i octets) {
    return static_cast<unsigned>(_mm_movemask_epi8(octets));
}

// Stores eight 16-bit values as code points.
CA_VECTOR void StoreWide(wchar_t* out, __m128i values) {
    Store(out, _mm_unpacklo_epi16(values, _mm_setzero_si128()));
    Store(out + 4, _mm_unpackhi_epi16(values, _mm_setzero_si128()));
}

// The code points of the first eight octets, each taken as the beginning of a letter.
CA_VECTOR __m128i CodesAt(__m128i octets) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i first = _mm_unpacklo_epi8(octets, zero);
    const __m128i second = _mm_unpacklo_epi8(_mm_srli_si128(octets, 1), zero);
    const __m128i high = _mm_slli_epi16(_mm_and_si128(first, AllLanes(0x1F)), 6);
    const __m128i pair = _mm_or_si128(high, _mm_and_si128(second, AllLanes(0x3F)));
    return Choose(_mm_cmpgt_epi16(AllLanes(0x80), first), first, pair);
}

}  // namespace

namespace ca::utf {

Path BestPath() {
    return __builtin_cpu_supports("ssse3") != 0 && __builtin_cpu_supports("popcnt") != 0
               ? Path::kVector
               : Path::kPlain;
}

CA_VECTOR void WidenBlocks(Octets& in, Octets end, wchar_t*& out, const wchar_t* full) {
    unsigned open = 0;  // 1: the octet before `in` began a letter that was already stored
    while (static_cast<std::size_t>(end - in) >= kWidenLoad && out < full) {
        const __m128i octets = Load(in);
        const unsigned others = Mask(octets);
        if ((others | open) == 0) {
            StoreWide(out, _mm_unpacklo_epi8(octets, _mm_setzero_si128()));
            StoreWide(out + kBlock, _mm_unpackhi_epi8(octets, _mm_setzero_si128()));
            in += kWidenLoad;
            out += kWidenLoad;
            continue;
        }
        // As signed numbers 0x80 to 0xBF are the lowest; 0xC0 and 0xC1 would be overlong.
        const unsigned following = Mask(_mm_cmpgt_epi8(AllOctets(0xC0), octets));
        const unsigned leads = Mask(_mm_and_si128(_mm_cmpgt_epi8(octets, AllOctets(0xC1)),
                                                  _mm_cmpgt_epi8(AllOctets(0xE0), octets)));
        const bool known = ((~others | leads | following) & 0xFF) == 0xFF;
        if (!known || (((leads << 1 | open) ^ following) & 0x1FF) != 0) {
            break;
        }
        const unsigned begins = ~following & 0xFF;
        StoreWide(out, Apply(kKeepMarked, begins, CodesAt(octets)));
        in += kBlock;
        out += std::popcount(begins);
        open = leads >> (kBlock - 1) & 1;
    }
    in += open;
}

CA_VECTOR void NarrowBlocks(const wchar_t*& in, const wchar_t* end, char*& out, const char* full) {
    while (static_cast<std::size_t>(end - in) >= kBlock && out < full) {
        // Packing saturates: what does not fit stays above the range.
        const __m128i codes = _mm_packs_epi32(Load(in), Load(in + 4));
        const __m128i zero = _mm_setzero_si128();
        if (Mask(_mm_cmpeq_epi16(_mm_srli_epi16(codes, 11), zero)) != 0xFFFF) {
            return;
        }
        const __m128i ascii = _mm_cmpgt_epi16(AllLanes(0x80), codes);
        const unsigned pairs = ~Mask(_mm_packs_epi16(ascii, zero)) & 0xFF;
        const __m128i low = _mm_slli_epi16(_mm_and_si128(codes, AllLanes(0x3F)), 8);
        const __m128i bits = _mm_or_si128(_mm_srli_epi16(codes, 6), low);
        const __m128i pair = _mm_or_si128(bits, AllLanes(0x80C0));
        Store(out, Apply(kKeepPairs, pairs, Choose(ascii, codes, pair)));
        in += kBlock;
        out += kBlock + static_cast<std::size_t>(std::popcount(pairs));
    }
}

}  // namespace ca::utf
