#pragma once

#include <cstddef>
#include <cstring>
#include <new>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

/// Memory whose end lies right before a page that may not be touched: the first octet read or
/// written past it stops the process.
class GuardedBuffer {
  public:
    explicit GuardedBuffer(std::size_t capacity) {
        const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        const std::size_t usable = (capacity + page - 1) / page * page;
        m_size = usable + page;
        m_memory =
            mmap(nullptr, m_size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (m_memory == MAP_FAILED) {
            throw std::bad_alloc();
        }
        m_end = static_cast<char*>(m_memory) + usable;
        mprotect(m_end, page, PROT_NONE);
    }
    GuardedBuffer(const GuardedBuffer&) = delete;
    GuardedBuffer& operator=(const GuardedBuffer&) = delete;
    ~GuardedBuffer() { munmap(m_memory, m_size); }

    /// The last `size` octets of the buffer.
    char* Last(std::size_t size) const { return m_end - size; }

    /// A copy of the text that ends with the buffer.
    const char* Hold(std::string_view text) const {
        return static_cast<const char*>(std::memcpy(Last(text.size()), text.data(), text.size()));
    }

  private:
    void* m_memory = nullptr;
    std::size_t m_size = 0;
    char* m_end = nullptr;
};
