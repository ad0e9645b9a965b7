#pragma once

#include <cstddef>
#include <string>

/// The two ways through UTF text: ca::u8u16() and ca::u16u8() take the vector one where the
/// processor has it. Both give the same result.
namespace ca::utf {

enum class Path { kPlain, kVector };

/// The fastest path of this processor.
Path BestPath();

/// Appends the code points of UTF-8 text.
void Widen(const char* text, std::size_t length, std::wstring& out, Path path);

/// Appends code points as UTF-8.
void Narrow(const wchar_t* text, std::size_t length, std::string& out, Path path);

using Octets = const unsigned char*;

constexpr std::size_t kBlock = 8;       // what a step converts at least, in octets or code points
constexpr std::size_t kWidenLoad = 16;  // octets that a step of WidenBlocks() reads and stores for
constexpr std::size_t kNarrowStore = 16;  // octets that a step of NarrowBlocks() stores

constexpr std::size_t kMaxSequence = 4;  // octets of one code point
constexpr std::size_t kNarrowSlack = kNarrowStore + kBlock * kMaxSequence;
constexpr std::size_t kShortText = 512;  // code points of NarrowShort() at most
constexpr std::size_t kShortRoom = kShortText * kMaxSequence + kNarrowSlack;

/// Writes at most kShortText code points as UTF-8, with kShortRoom octets of room.
/// \return the end of what was written.
char* NarrowShort(const wchar_t* text, std::size_t length, char* out);

// The vector steps, which need a processor that BestPath() finds fit. They convert text below
// U+0800 as long as it is well-formed and the input has whole steps left, starting a step only
// while `out` is below `full`; they leave `in` at the beginning of a sequence.
void WidenBlocks(Octets& in, Octets end, wchar_t*& out, const wchar_t* full);
void NarrowBlocks(const wchar_t*& in, const wchar_t* end, char*& out, const char* full);

}  // namespace ca::utf
