#include "common/Base64Paths.h"

#include <bit>
#include <immintrin.h>

// Only these functions are compiled for AVX2, so that the rest of the library runs anywhere.
#define CA_AVX2 __attribute__((target("avx2")))

namespace {

constexpr std::size_t kStep = 32;

// A step stores 32 octets of which 24 count. With this much text left, the buffer is sure to have
// room for them: 3 * 44 / 4 = 33 octets, and 24 more for a step before it.
constexpr std::size_t kLeftForStep = 44;
constexpr std::size_t kLeftForTwoSteps = kLeftForStep + kStep;

struct Tables {
    __m256i low;    // by low half: the classes that do not hold such a character
    __m256i high;   // by high half: the classes that a character may fall in
    __m256i shift;  // by high half, "/" one lower: what turns the character into its value
};

// A character is of the alphabet when no class of its high half excludes its low half. The classes
// are: 0x01 for 0x2_, 0x02 for 0x3_, 0x04 for 0x4_ and 0x6_, 0x08 for 0x5_ and 0x7_, 0x10 for the
// rest, which nothing admits. The low halves that they exclude, in order: all but "+" and "/"; past
// "9"; "@" and "`"; past "Z" and "z"; all.
CA_AVX2 Tables LoadTables() {
    return {
        _mm256_broadcastsi128_si256(_mm_setr_epi8(0x15, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11,
                                                  0x11, 0x11, 0x13, 0x1A, 0x1B, 0x1B, 0x1B, 0x1A)),
        _mm256_broadcastsi128_si256(_mm_setr_epi8(0x10, 0x10, 0x01, 0x02, 0x04, 0x08, 0x04, 0x08,
                                                  0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10)),
        _mm256_broadcastsi128_si256(_mm_setr_epi8(0, 63 - '/', 62 - '+', 52 - '0', -'A', -'A',
                                                  26 - 'a', 26 - 'a', 0, 0, 0, 0, 0, 0, 0, 0)),
    };
}

CA_AVX2 __m256i Load(const char* in) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in));
}

CA_AVX2 __m256i HighHalves(__m256i text) {
    return _mm256_and_si256(_mm256_srli_epi32(text, 4), _mm256_set1_epi8(0x0F));
}

// Zero where the character is of the alphabet.
CA_AVX2 __m256i Excluded(const Tables& tables, __m256i text) {
    const __m256i low = _mm256_and_si256(text, _mm256_set1_epi8(0x0F));
    return _mm256_and_si256(_mm256_shuffle_epi8(tables.low, low),
                            _mm256_shuffle_epi8(tables.high, HighHalves(text)));
}

// Stores the 24 octets of 32 characters, and eight more without meaning.
CA_AVX2 void StoreOctets(const Tables& tables, __m256i text, unsigned char* out) {
    const __m256i slash = _mm256_cmpeq_epi8(text, _mm256_set1_epi8('/'));
    const __m256i row = _mm256_add_epi8(HighHalves(text), slash);
    const __m256i values = _mm256_add_epi8(text, _mm256_shuffle_epi8(tables.shift, row));
    // 6 + 6 bits to 12, 12 + 12 to 24, then the three octets of each group together.
    const __m256i pairs = _mm256_maddubs_epi16(values, _mm256_set1_epi32(0x01400140));
    const __m256i groups = _mm256_madd_epi16(pairs, _mm256_set1_epi32(0x00011000));
    const __m256i order = _mm256_broadcastsi128_si256(
        _mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1));
    const __m256i halves = _mm256_shuffle_epi8(groups, order);
    const __m256i octets =
        _mm256_permutevar8x32_epi32(halves, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 3, 7));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), octets);
}

CA_AVX2 void TakeTwoSteps(const Tables& tables, ca::base64::Cursor& cursor) {
    while (cursor.Left() >= kLeftForTwoSteps) {
        const __m256i first = Load(cursor.In());
        const __m256i second = Load(cursor.In() + kStep);
        const __m256i excluded = _mm256_or_si256(Excluded(tables, first), Excluded(tables, second));
        if (_mm256_testz_si256(excluded, excluded) == 0) {
            return;
        }
        StoreOctets(tables, first, cursor.Out());
        StoreOctets(tables, second, cursor.Out() + kStep / 4 * 3);
        cursor.Advance(2 * kStep);
    }
}

// One step, up to the first character outside the alphabet; returns whether there was none.
CA_AVX2 bool TakeStep(const Tables& tables, ca::base64::Cursor& cursor) {
    const __m256i text = Load(cursor.In());
    const __m256i good = _mm256_cmpeq_epi8(Excluded(tables, text), _mm256_setzero_si256());
    const auto mask = static_cast<std::uint32_t>(_mm256_movemask_epi8(good));
    const auto count = static_cast<std::size_t>(std::countr_one(mask));
    StoreOctets(tables, text, cursor.Out());
    cursor.Advance(count / 4 * 4);
    return count == kStep;
}

}  // namespace

namespace ca::base64 {

bool HasAvx2() {
    return __builtin_cpu_supports("avx2") != 0;
}

CA_AVX2 Base64Run DecodeAvx2(const char* in, std::size_t length, unsigned char* out) {
    const Tables tables = LoadTables();
    Cursor cursor(in, length, out);
    while (cursor.Left() >= kLeftForStep) {
        TakeTwoSteps(tables, cursor);
        if (cursor.Left() < kLeftForStep || TakeStep(tables, cursor)) {
            continue;
        }
        if (!cursor.SkipLineBreaks() && !cursor.TakeGroup()) {
            return cursor.Result();
        }
    }
    return cursor.TakeRest();
}

}  // namespace ca::base64
