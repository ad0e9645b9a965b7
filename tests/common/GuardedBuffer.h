#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>
#include <span>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

/// Memory whose end lies right before a page that may not be touched: the first octet read or
/// written past it stops the process. What lies before its content is filled with a mark.
class GuardedBuffer {
  public:
    explicit GuardedBuffer(std::size_t capacity) {
        const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        m_size = (capacity / page + 1) * page;
        m_memory = mmap(nullptr, m_size + page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS,
                        -1, 0);
        if (m_memory == MAP_FAILED ||
            mprotect(static_cast<char*>(m_memory) + m_size, page, PROT_NONE) != 0) {
            throw std::bad_alloc();
        }
        m_mapped = m_size + page;
    }
    explicit GuardedBuffer(std::span<const unsigned char> octets) : GuardedBuffer(octets.size()) {
        m_held = octets.size();
        std::copy(octets.begin(), octets.end(), Data());
    }
    GuardedBuffer(const GuardedBuffer&) = delete;
    GuardedBuffer& operator=(const GuardedBuffer&) = delete;
    ~GuardedBuffer() { munmap(m_memory, m_mapped); }

    /// The last `size` octets of the buffer.
    char* Last(std::size_t size) const { return static_cast<char*>(m_memory) + m_size - size; }

    /// A copy of the text that ends with the buffer, the mark before it.
    char* Hold(std::string_view text) const {
        mprotect(m_memory, m_size, PROT_READ | PROT_WRITE);
        std::memset(m_memory, kMark, m_size);
        return static_cast<char*>(std::memcpy(Last(text.size()), text.data(), text.size()));
    }
    void MakeReadOnly() const { mprotect(m_memory, m_size, PROT_READ); }
    bool IsMarkedBefore(const char* start) const {
        const auto* begin = static_cast<const char*>(m_memory);
        return std::all_of(begin, start, [](char c) { return c == kMark; });
    }

    /// The octets that it was made of.
    unsigned char* Data() const { return reinterpret_cast<unsigned char*>(Last(m_held)); }
    unsigned Size() const { return static_cast<unsigned>(m_held); }

  private:
    static constexpr char kMark = '\x5A';

    void* m_memory = nullptr;
    std::size_t m_size = 0;    // of what may be touched
    std::size_t m_mapped = 0;  // and of the page after it
    std::size_t m_held = 0;
};
