#pragma once

#include <atomic>

/// Tells that nobody waits for a call's answer any more. It lives as long as the call.
///
/// A handler that learns so - its window was closed, its transfer was given up - cancels through
/// ca::CryptPacket::Cancel(); the dispatch then leaves without an error text and a closing line.
/// Safe from any thread.
class CancellationToken {
  public:
    CancellationToken() = default;
    CancellationToken(const CancellationToken&) = delete;
    CancellationToken& operator=(const CancellationToken&) = delete;
    ~CancellationToken() = default;

    void Cancel() noexcept { m_isCancelled.store(true, std::memory_order_release); }
    bool IsCancelled() const noexcept { return m_isCancelled.load(std::memory_order_acquire); }

  private:
    std::atomic<bool> m_isCancelled{false};
};
