#include "common/LogClaim.h"

#include "common/CancelShield.h"
#include "common/ForkMutex.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <new>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

// Threads that are inside a callback, or about to look for one. A call is counted before it
// reads the callback, so whoever has replaced it sees every call of the old one. Calls are counted
// in one of two phases: while one phase drains, new calls are counted in the other, and the wait
// ends however busy the log is. Counters are spread, so that threads do not share cache lines.
constexpr std::size_t kCounters = 64;
constexpr std::size_t kCacheLine = 64;
struct alignas(kCacheLine) Counter {
    std::array<std::atomic<std::uint32_t>, 2> calls;
};
constinit std::array<Counter, kCounters> counters{};
constinit std::atomic<std::uint32_t> phase{0};
constinit std::atomic<std::uint32_t> threadCount{0};

constinit std::atomic<LogCallback> currentCallback{nullptr};

constinit std::mutex waitMutex;  // one wait at a time: it moves the phase

// This thread's part of the counts; without a destructor, which would keep the library loaded.
struct OwnCalls {
    Counter* counter;
    std::array<std::uint32_t, 2> calls;
};
constinit thread_local OwnCalls ownCalls{nullptr, {}};

// The other threads are not there any more, whatever they were inside.
void ForgetOtherThreads() noexcept {
    for (Counter& counter : counters) {
        for (std::size_t i = 0; i < counter.calls.size(); ++i) {
            counter.calls[i] = &counter == ownCalls.counter ? ownCalls.calls[i] : 0;
        }
    }
    ::new (static_cast<void*>(&waitMutex)) std::mutex;
}

ca::CForkMutex claimsMutex(&ForgetOtherThreads);
constinit ca::CLogClaim* newestClaim = nullptr;  // guarded by it

class CRunningCall {
  public:
    CRunningCall() noexcept : m_own(ownCalls), m_phase(phase.load(std::memory_order_relaxed) & 1) {
        if (m_own.counter == nullptr) {
            m_own.counter =
                &counters[threadCount.fetch_add(1, std::memory_order_relaxed) % counters.size()];
        }
        ++m_own.calls[m_phase];
        m_own.counter->calls[m_phase].fetch_add(1, std::memory_order_seq_cst);
    }
    CRunningCall(const CRunningCall&) = delete;
    CRunningCall& operator=(const CRunningCall&) = delete;
    ~CRunningCall() {
        m_own.counter->calls[m_phase].fetch_sub(1, std::memory_order_release);
        --m_own.calls[m_phase];
    }

  private:
    OwnCalls& m_own;
    const std::uint32_t m_phase;
};

// Whether only calls of this thread are left in a phase.
bool IsDrained(std::uint32_t drained) noexcept {
    for (const Counter& counter : counters) {
        const std::uint32_t own = &counter == ownCalls.counter ? ownCalls.calls[drained] : 0;
        if (counter.calls[drained].load(std::memory_order_seq_cst) != own) {
            return false;
        }
    }
    return true;
}

// The caller has replaced the callback, and holds no lock: a callback may ask for it, or fork().
void WaitForCalls() noexcept {
    constexpr std::chrono::microseconds kPause(200);
    const std::lock_guard lock(waitMutex);
    const Clock::time_point end = Clock::now() + ca::CLogClaim::kPatience;
    for (int round = 0; round < 2; ++round) {
        const std::uint32_t drained = phase.fetch_add(1, std::memory_order_seq_cst) & 1;
        while (!IsDrained(drained) && Clock::now() < end) {
            std::this_thread::sleep_for(kPause);
        }
    }
}

}  // namespace

namespace ca {

void CLogClaim::Hold(LogCallback callback) noexcept {
    Release();
    const std::lock_guard lock(claimsMutex);
    m_callback = callback;
    m_older = newestClaim;
    m_isHeld = true;
    newestClaim = this;
    SetLogCallback(callback);
}

void CLogClaim::Release() noexcept {
    if (!m_isHeld) {
        return;
    }
    const CCancelShield shield;  // waiting is a cancellation point
    if (Unlink() && m_callback != nullptr) {
        WaitForCalls();
    }
}

bool CLogClaim::Unlink() noexcept {
    const std::lock_guard lock(claimsMutex);
    bool isLast = true;
    for (CLogClaim** link = &newestClaim; *link != nullptr;) {
        if (*link == this) {
            *link = m_older;
            continue;
        }
        isLast = isLast && (*link)->m_callback != m_callback;
        link = &(*link)->m_older;
    }
    m_isHeld = false;
    SetLogCallback(newestClaim != nullptr ? newestClaim->m_callback : nullptr);
    return isLast;
}

void SetLogCallback(LogCallback callback) noexcept {
    currentCallback.store(callback, std::memory_order_seq_cst);
}

bool CallLog(const wchar_t* line, bool isError) {
    if (currentCallback.load(std::memory_order_relaxed) == nullptr) {
        return false;
    }
    const CRunningCall running;
    const LogCallback callback = currentCallback.load(std::memory_order_seq_cst);
    return callback != nullptr && callback(line, isError);
}

}  // namespace ca
