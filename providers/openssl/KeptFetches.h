#pragma once

#include "common/ForkMutex.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace ca {

/// Seconds of the clock that nobody sets.
inline std::int64_t SteadySeconds() noexcept {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec;
}

/// What was fetched, in memory: the `limit` that were kept last. Safe from any thread.
template <class T>
class CKeptFetches {
  public:
    explicit CKeptFetches(std::size_t limit) : m_limit(limit) {}
    CKeptFetches(const CKeptFetches&) = delete;
    CKeptFetches& operator=(const CKeptFetches&) = delete;
    ~CKeptFetches() = default;

    /// Null for what is not there, or is `cacheTime` seconds old.
    std::shared_ptr<T> Find(const std::wstring& key, int cacheTime) {
        const std::lock_guard lock(m_mutex);
        const auto known = m_kept.find(key);
        const bool isFresh =
            known != m_kept.end() && SteadySeconds() - known->second.since < cacheTime;
        return isFresh ? known->second.object : nullptr;
    }

    /// \param age  seconds since it was fetched.
    void Keep(const std::wstring& key, std::shared_ptr<T> object, std::int64_t age = 0) {
        const std::lock_guard lock(m_mutex);
        if (m_kept.size() >= m_limit && !m_kept.contains(key)) {
            m_kept.erase(std::ranges::min_element(
                m_kept, {}, [](const auto& each) { return each.second.since; }));
        }
        m_kept[key] = {std::move(object), SteadySeconds() - age};
    }

  private:
    struct Kept {
        std::shared_ptr<T> object;
        std::int64_t since;
    };

    const std::size_t m_limit;
    CForkMutex m_mutex;  // guards what follows; not held while a server is asked
    std::map<std::wstring, Kept> m_kept;
};

}  // namespace ca
