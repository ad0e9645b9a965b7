#pragma once

#include "common/HeapPtr.h"
#include "common/Json.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>

namespace ca {

/// Owns octets in one malloc block, so that they can cross the module boundary and take over what
/// the Base64 decoder returns without a copy. Moves, never copies by itself.
class Blob {
  public:
    Blob() = default;
    Blob(Blob&& other) noexcept
        : m_data(std::move(other.m_data)), m_size(std::exchange(other.m_size, 0)) {}
    Blob& operator=(Blob&& other) noexcept {
        if (this != &other) {
            m_data = std::move(other.m_data);
            m_size = std::exchange(other.m_size, 0);
        }
        return *this;
    }
    ~Blob() = default;

    const unsigned char* data() const { return m_data.Get(); }
    unsigned char* data() { return m_data.Get(); }
    std::uint32_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    std::span<const unsigned char> Octets() const { return {m_data.Get(), m_size}; }

    /// Takes over a block of which `size` octets count; what was held is freed.
    void Adopt(BytePtr block, std::uint32_t size) noexcept;

    /// Holds a copy of `size` octets. Throws std::bad_alloc, what was held then staying.
    void Assign(const void* octets, std::uint32_t size);

    /// Holds `size` octets of the value 0. Throws std::bad_alloc, what was held then staying.
    void AssignZeros(std::uint32_t size);

    /// Holds the octets of a JSON string of Base64; what was held is freed first.
    /// Throws ca::Exception 16300 when the value is not a string (what was held then stays), 16118
    /// when nothing decodes, 16197 when out of memory.
    void AssignBase64(const JsonValue& value);

    /// Gives the block away; the blob is empty then. Read size() first.
    BytePtr Release() noexcept;

    void Clear() noexcept { Release().Free(); }

  private:
    BytePtr m_data;
    std::uint32_t m_size = 0;
};

/// Octets that nobody changes any more. Who holds a copy of this keeps them alive, so that views of
/// them stay good whatever becomes of the others.
class SharedBlob {
  public:
    SharedBlob() = default;
    explicit SharedBlob(Blob octets) : m_octets(std::make_shared<const Blob>(std::move(octets))) {}

    std::span<const unsigned char> Octets() const {
        return m_octets != nullptr ? m_octets->Octets() : std::span<const unsigned char>();
    }

  private:
    std::shared_ptr<const Blob> m_octets;
};

/// Writes one JSON string: the Base64 text, encoded straight into the writer's buffer.
void WriteBase64(JsonWriter& writer, std::span<const unsigned char> octets);

}  // namespace ca
