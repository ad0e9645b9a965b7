#pragma once

#include "common/ForkMutex.h"
#include "common/StdStr.h"
#include "module/ClientTable.h"
#include "records/StoreAddress.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string_view>
#include <utility>
#include <vector>

class CCryptoModule;

/// Stores as they were when they were asked for; never null.
using StoresSnapshot = std::shared_ptr<const ca::StoreAddresses>;

/// Certificates (DER) of a client's temporary store as they were when they were asked for; never
/// null.
using CertificatesSnapshot = std::shared_ptr<const std::vector<std::vector<unsigned char>>>;

/// What one client keeps between its requests.
class CClientContext {
  public:
    explicit CClientContext(CStdStr<wchar_t> id);
    CClientContext(const CClientContext&) = delete;
    CClientContext& operator=(const CClientContext&) = delete;
    ~CClientContext() = default;

    const CStdStr<wchar_t>& Id() const noexcept { return m_id; }

    StoresSnapshot stores;              ///< the current stores; empty at first
    CertificatesSnapshot certificates;  ///< of the temporary store; empty at first
    std::uint32_t lastUse = 0;          ///< milliseconds of the array's clock

  private:
    friend class CClientContextArray;  // the rest is its own

    CClientContext* m_previous = nullptr;  // used before this one; null: none
    CClientContext* m_next = nullptr;
    std::size_t m_hash = 0;
    std::size_t m_memory = 0;  // octets it counts for
    CStdStr<wchar_t> m_id;
};

/// Milliseconds of the real-time clock modulo 2^32.
std::uint32_t RealTimeMilliseconds();

/// The clients' contexts. Every operation may run in any thread; the mutex here is the only lock
/// over the clients' state, and a failing lock throws std::system_error. Under it nothing is done
/// that grows with the number of clients, but for what a sweep or the memory's end removes.
///
/// Differences of time stamps are unsigned 32-bit subtractions, right across the counter's wrap.
class CClientContextArray {
  public:
    using Clock = std::uint32_t (*)();

    static constexpr std::uint32_t kSweepIntervalMs = 3600000;  ///< at most one sweep an hour
    static constexpr std::uint32_t kMaxIdleMs = 10800000;       ///< three hours
    static constexpr std::size_t kMaxMemory = 64U << 20;        ///< until SetMaxMemory()

    /// A request's hold on its client's context. As long as it lives, the context is not given up
    /// for lack of memory. The array must outlive it.
    class CUse {
      public:
        CUse() = default;
        CUse(CClientContextArray& owner, std::shared_ptr<CClientContext> context)
            : m_owner(&owner), m_context(std::move(context)) {}
        CUse(const CUse&) = delete;
        CUse& operator=(const CUse&) = delete;
        CUse(CUse&&) noexcept = default;
        CUse& operator=(CUse&&) noexcept = default;
        ~CUse();

      private:
        CClientContextArray* m_owner = nullptr;
        std::shared_ptr<CClientContext> m_context;  // null: holds nothing
    };

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
    ///         the client, sweep or need its memory: see Use().
    CClientContext* AcquireContext(CStdStr<wchar_t> id);
    /// AcquireContext() for as long as a request runs.
    CUse Use(std::wstring_view id);

    /// The client's current stores; empty for an unknown client. Later changes do not show in them.
    StoresSnapshot CurrentStores(std::wstring_view id) const;
    /// Sets the client's current stores, also when the client was released in the meantime.
    /// \return false, with everything as it was, when this client's state alone would take more
    ///         memory than all clients may.
    bool ReplaceStores(std::wstring_view id, ca::StoreAddresses stores);

    /// The same of the certificates in the client's temporary store.
    CertificatesSnapshot TempCertificates(std::wstring_view id) const;
    bool ReplaceTempCertificates(std::wstring_view id,
                                 std::vector<std::vector<unsigned char>> certificates);

    /// What ids, stores and the tables about them may take together, in octets. Beyond it the
    /// contexts that were idle longest go before their time, but never one that is in use: so the
    /// requests that run may take more for as long as they run.
    void SetMaxMemory(std::size_t octets);
    std::size_t Memory() const;

    /// Destroys the contexts that were idle for more than three hours.
    void RemoveOld();
    /// Destroys the client's context, if there is one.
    void Remove(CStdStr<wchar_t> id);
    /// Destroys all contexts.
    void CleanUp();

    std::size_t Count() const;

  private:
    using Dropped = std::vector<std::shared_ptr<CClientContext>>;

    static std::size_t MemoryOf(std::wstring_view id);

    template <class Snapshot>
    bool Replace(std::wstring_view id, Snapshot CClientContext::*member, Snapshot snapshot);

    std::shared_ptr<CClientContext> Acquire(std::wstring_view id);
    void EndUse(std::shared_ptr<CClientContext> context) noexcept;

    // The following expect the mutex to be held. What they drop is destroyed by their caller, when
    // the mutex is free again.
    const std::shared_ptr<CClientContext>& FindOrCreate(const ClientKey& key);
    void MarkUsed(CClientContext& context);
    void Append(CClientContext& context) noexcept;
    void Unlink(CClientContext& context) noexcept;
    void Drop(CClientContext& context, Dropped& dropped) noexcept;
    void DropOld(Dropped& dropped);
    void DropForMemory(Dropped& dropped) noexcept;

    CCryptoModule* m_module;
    Clock m_clock;
    std::atomic<std::uint32_t> m_lastSweep;
    std::atomic<bool> m_isOver{false};  // more memory is taken than allowed
    mutable ca::CForkMutex m_mutex;     // guards what follows
    CClientTable m_table;
    // The contexts in order of their last use, longest ago first. A sweep ends at the first that
    // stays, so it costs what it removes.
    CClientContext* m_first = nullptr;
    CClientContext* m_last = nullptr;
    std::size_t m_memory = 0;
    std::size_t m_maxMemory = kMaxMemory;
    bool m_isInOrder = true;  // also by their time stamps: the clock was not put back
};
