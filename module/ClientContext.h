#pragma once

#include "common/ForkMutex.h"
#include "common/StdStr.h"
#include "records/StoreAddress.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string_view>
#include <unordered_map>
#include <vector>

class CCryptoModule;

/// What one client keeps between its requests.
class CClientContext {
  public:
    explicit CClientContext(CStdStr<wchar_t> id) : m_id(std::move(id)) {}
    CClientContext(const CClientContext&) = delete;
    CClientContext& operator=(const CClientContext&) = delete;
    ~CClientContext() = default;

    const CStdStr<wchar_t>& Id() const noexcept { return m_id; }

    ca::StoreAddresses stores;  ///< the current stores; empty at first
    std::uint32_t lastUse = 0;  ///< milliseconds of the array's clock

  private:
    CStdStr<wchar_t> m_id;
};

/// Milliseconds of the real-time clock modulo 2^32.
std::uint32_t RealTimeMilliseconds();

/// The clients' contexts in order of creation. Every operation may run in any thread; the mutex
/// here is the only lock over the clients' state, and a failing lock throws std::system_error.
///
/// Differences of time stamps are unsigned 32-bit subtractions, right across the counter's wrap.
class CClientContextArray {
  public:
    using Clock = std::uint32_t (*)();

    static constexpr std::uint32_t kSweepIntervalMs = 3600000;  ///< at most one sweep an hour
    static constexpr std::uint32_t kMaxIdleMs = 10800000;       ///< three hours

    /// \param module  the owner, which outlives the array.
    explicit CClientContextArray(CCryptoModule* module, Clock clock = &RealTimeMilliseconds);
    CClientContextArray(const CClientContextArray&) = delete;
    CClientContextArray& operator=(const CClientContextArray&) = delete;
    ~CClientContextArray() = default;

    CCryptoModule* Module() const noexcept { return m_module; }

    /// The client's context, created when there is none, its last use being now. Sweeps first when
    /// the last sweep was more than an hour ago.
    /// \param id  compared exactly; the empty id is a client of its own.
    /// \return never null; owned by the array. Nothing keeps it alive while other threads release
    ///         the client or sweep: read and write through CopyStores() and ReplaceStores().
    CClientContext* AcquireContext(CStdStr<wchar_t> id);

    /// A copy of the client's current stores; empty for an unknown client.
    ca::StoreAddresses CopyStores(std::wstring_view id) const;
    /// Sets the client's current stores, also when the client was released in the meantime.
    void ReplaceStores(CStdStr<wchar_t> id, ca::StoreAddresses stores);

    /// Destroys the contexts that were idle for more than three hours.
    void RemoveOld();
    /// Destroys the client's context, if there is one.
    void Remove(CStdStr<wchar_t> id);
    /// Destroys all contexts.
    void CleanUp();

    std::size_t Count() const;

  private:
    // The following expect the mutex to be held.
    CClientContext& FindOrCreate(CStdStr<wchar_t> id);
    void Compact();

    CCryptoModule* m_module;
    // Order of creation. A removed context leaves an empty place, so that removing moves nothing;
    // Compact() closes the places once they are the greater part.
    std::vector<std::unique_ptr<CClientContext>> m_contexts;
    std::atomic<std::uint32_t> m_lastSweep;
    mutable ca::CForkMutex m_mutex;
    // Place of every context in m_contexts; the keys are views of the contexts' own ids.
    std::unordered_map<std::wstring_view, std::size_t> m_places;
    Clock m_clock;
};
