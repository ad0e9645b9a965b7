#pragma once

#include <utility>

/// Owns one record; Free() destroys it with everything it holds.
template <class T>
class CAutoPtr {
  public:
    CAutoPtr() = default;
    explicit CAutoPtr(T* object) : m_object(object) {}
    CAutoPtr(CAutoPtr&& other) noexcept : m_object(other.Detach()) {}
    CAutoPtr& operator=(CAutoPtr&& other) noexcept {
        if (this != &other) {
            Free();
            m_object = other.Detach();
        }
        return *this;
    }
    CAutoPtr(const CAutoPtr&) = delete;
    CAutoPtr& operator=(const CAutoPtr&) = delete;
    ~CAutoPtr() { Free(); }

    T* Get() const { return m_object; }
    T* operator->() const { return m_object; }
    T& operator*() const { return *m_object; }
    explicit operator bool() const { return m_object != nullptr; }

    /// Gives the record away, to a container that takes ownership.
    T* Detach() { return std::exchange(m_object, nullptr); }
    void Free() { delete std::exchange(m_object, nullptr); }

  private:
    T* m_object = nullptr;
};
