#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace ca {

/// The key of a keyed hash.
using HashKey = std::array<std::uint64_t, 2>;

/// SipHash (Aumasson and Bernstein, "SipHash: a fast short-input PRF", 2012) with one round for
/// each eight octets and three at the end.
std::uint64_t SipHash13(std::span<const std::byte> octets, const HashKey& key) noexcept;
/// The same with two and four rounds, for which its authors give test values.
std::uint64_t SipHash24(std::span<const std::byte> octets, const HashKey& key) noexcept;

/// Hash for tables whose keys are texts that a stranger chooses: SipHash-1-3 under a random key of
/// this process, so that nobody outside can find texts that meet in one bucket.
///
/// The standard library's hash can be run backwards, with any seed, and a table of colliding texts
/// is a list. A tree would be safe too, but among a million texts of some length each look-up reads
/// twenty of them from memory, where a table reads one or two; the hash of thirty characters takes
/// less time than one such read.
struct SeededHash {
    std::size_t operator()(std::wstring_view text) const noexcept;
};

}  // namespace ca
