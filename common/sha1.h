#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <istream>
#include <span>
#include <string>
#include <utility>

/// SHA-1 (FIPS 180-4) of octets, or of wide characters that carry one octet each: only the low
/// eight bits of a character count. An object serves one digest at a time and one thread.
class SHA1 {
  public:
    SHA1() { Reset(); }

    void Reset();
    void Update(const std::wstring& text);
    void Update(std::span<const unsigned char> octets);
    /// Reads the stream to its end.
    void Update(std::wistream& stream);

    /// The digest of what was fed since the last reset: 40 hexadecimal digits, lower case. Leaves
    /// the object reset.
    std::wstring Final();

    /// The digest of `text` alone.
    std::wstring GetHash(const std::wstring& text);

  private:
    using Block = std::array<std::uint32_t, 16>;
    using State = std::array<std::uint32_t, 5>;

    static std::uint32_t rol(std::uint32_t value, int bits);
    static std::uint32_t blk(Block& block, std::size_t i);
    // One round each: 0 to 15 take the block's words, 16 to 79 the schedule's, in four families.
    static void R0(Block& block, State& state, std::size_t i);
    static void R1(Block& block, State& state, std::size_t i);
    static void R2(Block& block, State& state, std::size_t i);
    static void R3(Block& block, State& state, std::size_t i);
    static void R4(Block& block, State& state, std::size_t i);
    template <class Char>
    static Block buffer_to_block(const Char* octets);
    void Transform(Block block);
    template <auto Round, std::size_t First, std::size_t... Index>
    static void Rounds(Block& block, State& state, std::index_sequence<Index...>);
    template <class Char>
    void Feed(const Char* octets, std::size_t count);

    State m_digest;
    std::uint64_t m_octets;  ///< fed so far, those still in the buffer included
    std::wstring m_buffer;   ///< an unfinished block, shorter than 64
};

namespace ca {

/// The SHA-1 of octets as 40 lower-case hexadecimal digits.
std::wstring Sha1Hex(std::span<const unsigned char> octets);

}  // namespace ca
