#include "common/sha1.h"

#include "common/Hex.h"

#include <algorithm>
#include <bit>

namespace {

// Octets of a block and of the length at its end (FIPS 180-4, 5.1.1).
constexpr std::size_t kBlockOctets = 64;
constexpr std::size_t kLengthOctets = 8;

template <class Char>
std::uint32_t Octet(Char c) {
    return static_cast<std::uint32_t>(c) & 0xFF;
}

// The functions of FIPS 180-4, 4.1.1; Choose and Majority in forms with one operation less.
std::uint32_t Choose(std::uint32_t x, std::uint32_t y, std::uint32_t z) {
    return (x & (y ^ z)) ^ z;
}

std::uint32_t Parity(std::uint32_t x, std::uint32_t y, std::uint32_t z) {
    return x ^ y ^ z;
}

std::uint32_t Majority(std::uint32_t x, std::uint32_t y, std::uint32_t z) {
    return (x & y) | (z & (x | y));
}

// What all rounds share: `sum` is the round's function, constant and word.
void Turn(std::array<std::uint32_t, 5>& state, std::uint32_t sum) {
    const auto [a, b, c, d, e] = state;
    state = {std::rotl(a, 5) + e + sum, a, std::rotl(b, 30), c, d};
}

}  // namespace

inline std::uint32_t SHA1::rol(std::uint32_t value, int bits) {
    return std::rotl(value, bits);
}

// The next word of the message schedule; it takes the place of the one sixteen rounds older.
inline std::uint32_t SHA1::blk(Block& block, std::size_t i) {
    return block[i % 16] = rol(
               block[(i + 13) % 16] ^ block[(i + 8) % 16] ^ block[(i + 2) % 16] ^ block[i % 16], 1);
}

inline void SHA1::R0(Block& block, State& state, std::size_t i) {
    // The constants are those of FIPS 180-4, 4.2.1.
    Turn(state, Choose(state[1], state[2], state[3]) + 0x5A827999 + block[i]);
}

inline void SHA1::R1(Block& block, State& state, std::size_t i) {
    Turn(state, Choose(state[1], state[2], state[3]) + 0x5A827999 + blk(block, i));
}

inline void SHA1::R2(Block& block, State& state, std::size_t i) {
    Turn(state, Parity(state[1], state[2], state[3]) + 0x6ED9EBA1 + blk(block, i));
}

inline void SHA1::R3(Block& block, State& state, std::size_t i) {
    Turn(state, Majority(state[1], state[2], state[3]) + 0x8F1BBCDC + blk(block, i));
}

inline void SHA1::R4(Block& block, State& state, std::size_t i) {
    Turn(state, Parity(state[1], state[2], state[3]) + 0xCA62C1D6 + blk(block, i));
}

template <class Char>
SHA1::Block SHA1::buffer_to_block(const Char* octets) {
    Block block;
    for (std::size_t i = 0; i < block.size(); ++i, octets += 4) {
        block[i] = Octet(octets[0]) << 24 | Octet(octets[1]) << 16 | Octet(octets[2]) << 8 |
                   Octet(octets[3]);
    }
    return block;
}

// One after the other instead of in a loop: the words of the state then change their names from
// round to round instead of their places.
template <auto Round, std::size_t First, std::size_t... Index>
void SHA1::Rounds(Block& block, State& state, std::index_sequence<Index...>) {
    (Round(block, state, First + Index), ...);
}

void SHA1::Transform(Block block) {
    State state = m_digest;
    Rounds<R0, 0>(block, state, std::make_index_sequence<16>());
    Rounds<R1, 16>(block, state, std::make_index_sequence<4>());
    Rounds<R2, 20>(block, state, std::make_index_sequence<20>());
    Rounds<R3, 40>(block, state, std::make_index_sequence<20>());
    Rounds<R4, 60>(block, state, std::make_index_sequence<20>());
    for (std::size_t word = 0; word < state.size(); ++word) {
        m_digest[word] += state[word];
    }
}

void SHA1::Reset() {
    // The initial value (FIPS 180-4, 5.3.1).
    m_digest = {0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0};
    m_octets = 0;
    m_buffer.clear();
}

template <class Char>
void SHA1::Feed(const Char* octets, std::size_t count) {
    m_octets += count;
    while (count != 0) {
        // Whole blocks straight from the caller's octets; only ends are copied.
        if (m_buffer.empty() && count >= kBlockOctets) {
            Transform(buffer_to_block(octets));
            octets += kBlockOctets;
            count -= kBlockOctets;
            continue;
        }
        const std::size_t taken = std::min(count, kBlockOctets - m_buffer.size());
        m_buffer.append(octets, octets + taken);
        octets += taken;
        count -= taken;
        if (m_buffer.size() == kBlockOctets) {
            Transform(buffer_to_block(m_buffer.data()));
            m_buffer.clear();
        }
    }
}

void SHA1::Update(const std::wstring& text) {
    Feed(text.data(), text.size());
}

void SHA1::Update(std::span<const unsigned char> octets) {
    Feed(octets.data(), octets.size());
}

void SHA1::Update(std::wistream& stream) {
    std::array<wchar_t, 1024> piece;
    do {
        stream.read(piece.data(), piece.size());
        Feed(piece.data(), static_cast<std::size_t>(stream.gcount()));
    } while (stream);
}

std::wstring SHA1::Final() {
    const std::uint64_t bits = m_octets * 8;
    // One bit, zeros up to the last eight octets of a block, then the length in bits (FIPS 180-4,
    // 5.1.1).
    std::wstring padding(1, L'\x80');
    const std::size_t filled = (m_buffer.size() + padding.size() + kLengthOctets) % kBlockOctets;
    padding.append((kBlockOctets - filled) % kBlockOctets, L'\0');
    for (int shift = 56; shift >= 0; shift -= 8) {
        padding += static_cast<wchar_t>(bits >> shift & 0xFF);
    }
    Feed(padding.data(), padding.size());

    std::wstring text;
    text.reserve(m_digest.size() * 8);
    for (const std::uint32_t word : m_digest) {
        for (int shift = 28; shift >= 0; shift -= 4) {
            text += static_cast<wchar_t>(ca::HexDigit(word >> shift));
        }
    }
    // Ready for the next text.
    Reset();
    return text;
}

std::wstring SHA1::GetHash(const std::wstring& text) {
    Reset();
    Update(text);
    return Final();
}

std::wstring ca::Sha1Hex(std::span<const unsigned char> octets) {
    SHA1 digest;
    digest.Update(octets);
    return digest.Final();
}
