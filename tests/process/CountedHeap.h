#pragma once

#include <cstddef>

/// The C library's heap, with this program's functions before it: counts blocks, and says no when
/// it is told to. Of all threads together; for programs that ask one at a time.
namespace CountedHeap {

enum class Refusal { kOnce, kFromThen };

/// Lets `count` - 1 allocations pass and refuses the next one, or all from that one on.
void RefuseAt(std::size_t count, Refusal refusal);
/// Refuses nothing any more. Whether anything was refused.
bool Relent();

/// Blocks that are allocated.
std::size_t LiveBlocks();

}  // namespace CountedHeap
