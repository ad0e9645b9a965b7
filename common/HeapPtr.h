#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>
#include <sys/mman.h>
#include <utility>

namespace ca {

/// The C run-time's heap: what crosses the module boundary is released by the host with free().
struct CCRTAllocator {
    /// Throws std::bad_alloc. A size of 0 still gives a block of its own.
    static void* Allocate(std::size_t size) {
        void* block = size < kLargeBlock ? std::malloc(size != 0 ? size : 1) : AllocateLarge(size);
        if (block == nullptr) {
            throw std::bad_alloc();
        }
        return block;
    }
    /// Throws std::bad_alloc; the block stays as it was then. A null block is a fresh one.
    static void* Reallocate(void* block, std::size_t size) {
        void* moved = std::realloc(block, size != 0 ? size : 1);
        if (moved == nullptr) {
            throw std::bad_alloc();
        }
        return moved;
    }
    static void Free(void* block) { std::free(block); }

  private:
    static constexpr std::size_t kHugePage = std::size_t{2} << 20;  // x86-64
    static constexpr std::size_t kLargeBlock = 2 * kHugePage;

    // Filling fresh memory page by page takes several times as long as copying into it, so a large
    // block asks for huge pages. Where the system has none the advice does nothing.
    static void* AllocateLarge(std::size_t size) {
        void* block = nullptr;
        if (::posix_memalign(&block, kHugePage, size) != 0) {
            return nullptr;
        }
        ::madvise(block, size, MADV_HUGEPAGE);
        return block;
    }
};

/// Owns one buffer of `Allocator`; moves, never copies.
template <class T, class Allocator>
class HeapPtr {
  public:
    HeapPtr() = default;
    /// Takes ownership of a buffer of the allocator.
    explicit HeapPtr(T* block) : m_block(block) {}
    HeapPtr(HeapPtr&& other) noexcept : m_block(other.Detach()) {}
    HeapPtr& operator=(HeapPtr&& other) noexcept {
        if (this != &other) {
            Attach(other.Detach());
        }
        return *this;
    }
    HeapPtr(const HeapPtr&) = delete;
    HeapPtr& operator=(const HeapPtr&) = delete;
    ~HeapPtr() { Free(); }

    /// A buffer of `count` elements, not initialised. Throws std::bad_alloc.
    static HeapPtr Make(std::size_t count) {
        return HeapPtr(static_cast<T*>(Allocator::Allocate(count * sizeof(T))));
    }

    T* Get() const { return m_block; }
    explicit operator bool() const { return m_block != nullptr; }

    /// Gives the buffer away; the caller releases it.
    T* Detach() { return std::exchange(m_block, nullptr); }
    void Attach(T* block) {
        Free();
        m_block = block;
    }
    /// Changes the buffer to `count` elements and keeps those that fit. Throws std::bad_alloc; the
    /// buffer stays as it was then.
    void Resize(std::size_t count) {
        m_block = static_cast<T*>(Allocator::Reallocate(m_block, count * sizeof(T)));
    }
    void Free() { Allocator::Free(Detach()); }

  private:
    T* m_block = nullptr;
};

using BytePtr = HeapPtr<unsigned char, CCRTAllocator>;

}  // namespace ca
