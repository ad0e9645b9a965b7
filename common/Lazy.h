#pragma once

#include "common/ForkMutex.h"

#include <atomic>
#include <memory>
#include <new>

namespace ca {

/// A value that is made when it is first asked for, by whatever thread. It stands outside
/// functions, where a local static value would stay half made in a child whose parent was making it
/// as it forked: the child would wait for it for ever.
template <class T>
class CLazy {
  public:
    /// \param make  calls no host. What it throws leaves the value unmade: the next one tries
    /// again.
    explicit CLazy(T (*make)()) : m_make(make) {}
    CLazy(const CLazy&) = delete;
    CLazy& operator=(const CLazy&) = delete;
    ~CLazy() {
        if (T* const value = m_value.load(std::memory_order_relaxed)) {
            std::destroy_at(value);
        }
    }

    const T& Get() {
        const T* const value = m_value.load(std::memory_order_acquire);
        return value != nullptr ? *value : Make();
    }

  private:
    const T& Make() {
        const std::lock_guard lock(m_mutex);
        T* value = m_value.load(std::memory_order_relaxed);
        if (value == nullptr) {
            value = ::new (static_cast<void*>(m_room)) T(m_make());
            m_value.store(value, std::memory_order_release);
        }
        return *value;
    }

    T (*const m_make)();
    CForkMutex m_mutex;
    std::atomic<T*> m_value{nullptr};
    alignas(T) unsigned char m_room[sizeof(T)];
};

}  // namespace ca
