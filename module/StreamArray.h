#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

class CCryptoModule;

/// One open stream of a client, as the streaming operations keep it between two chunks.
class CStream {
  public:
    CStream(const CStream&) = delete;
    CStream& operator=(const CStream&) = delete;
    virtual ~CStream() = default;

  protected:
    CStream() = default;
};

/// The module's open streams, which it owns. This module's streaming operations do nothing, so
/// none is ever opened; a provider that streams derives from this class.
class CStreamArray {
  public:
    /// \param module  the owner, which outlives the array.
    explicit CStreamArray(CCryptoModule* module) : m_module(module) {}
    CStreamArray(const CStreamArray&) = delete;
    CStreamArray& operator=(const CStreamArray&) = delete;
    virtual ~CStreamArray() = default;

    CCryptoModule* Module() const noexcept { return m_module; }
    std::size_t Count() const noexcept { return m_streams.size(); }

  protected:
    std::vector<std::unique_ptr<CStream>> m_streams;
    std::uint64_t m_lastId = 0;  ///< number of the stream opened last

  private:
    CCryptoModule* m_module;
};
