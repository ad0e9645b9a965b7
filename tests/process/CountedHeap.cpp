#include "tests/process/CountedHeap.h"

#include <atomic>
#include <cerrno>
#include <cstdint>

// glibc's own functions under the names that stay when a program brings its own.
extern "C" void* __libc_malloc(std::size_t);
extern "C" void* __libc_calloc(std::size_t, std::size_t);
extern "C" void* __libc_realloc(void*, std::size_t);
extern "C" void* __libc_memalign(std::size_t, std::size_t);
extern "C" void __libc_free(void*);

namespace {

constinit std::atomic<std::size_t> live{0};
constinit std::atomic<std::size_t> passing{SIZE_MAX};  // allocations before the refusal
constinit std::atomic<bool> refusesAll{false};
constinit std::atomic<bool> hasRefused{false};

bool Refuses() {
    if (passing.load(std::memory_order_relaxed) == SIZE_MAX) {
        return false;
    }
    if (passing == 0) {
        hasRefused = true;
        passing = refusesAll ? 0 : SIZE_MAX;
        errno = ENOMEM;
        return true;
    }
    --passing;
    return false;
}

void* Counted(void* block) {
    live += block != nullptr ? 1 : 0;
    return block;
}

}  // namespace

namespace CountedHeap {

void RefuseAt(std::size_t count, Refusal refusal) {
    hasRefused = false;
    refusesAll = refusal == Refusal::kFromThen;
    passing = count - 1;
}

bool Relent() {
    passing = SIZE_MAX;
    return hasRefused;
}

std::size_t LiveBlocks() {
    return live;
}

}  // namespace CountedHeap

#pragma GCC visibility push(default)
extern "C" {

void* malloc(std::size_t size) {
    return Refuses() ? nullptr : Counted(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) {
    return Refuses() ? nullptr : Counted(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) {
    if (Refuses()) {
        return nullptr;
    }
    void* const moved = __libc_realloc(block, size);
    if (block == nullptr) {
        return Counted(moved);
    }
    live -= moved == nullptr && size == 0 ? 1 : 0;  // that frees
    return moved;
}

void* memalign(std::size_t alignment, std::size_t size) {
    return Refuses() ? nullptr : Counted(__libc_memalign(alignment, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
    void* const made = memalign(alignment, size);
    if (made == nullptr) {
        return ENOMEM;
    }
    *block = made;
    return 0;
}

void free(void* block) {
    live -= block != nullptr ? 1 : 0;
    __libc_free(block);
}

}  // extern "C"
#pragma GCC visibility pop
