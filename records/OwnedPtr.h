#pragma once

#include <memory>
#include <utility>

namespace ca {

/// Owns an object or nothing; a copy owns a copy of the object. T may be incomplete until the
/// copying or destroying code is compiled.
template <class T>
class OwnedPtr : public std::unique_ptr<T> {
  public:
    using std::unique_ptr<T>::unique_ptr;
    OwnedPtr() = default;
    OwnedPtr(
        std::unique_ptr<T>&& other) noexcept  // NOLINT(google-explicit-constructor): same owner
        : std::unique_ptr<T>(std::move(other)) {}
    OwnedPtr(OwnedPtr&&) noexcept = default;
    OwnedPtr& operator=(OwnedPtr&&) noexcept = default;
    OwnedPtr(const OwnedPtr& other)
        : std::unique_ptr<T>(other ? std::make_unique<T>(*other) : nullptr) {}
    OwnedPtr& operator=(const OwnedPtr& other) {
        if (this != &other) {
            *this = OwnedPtr(other);
        }
        return *this;
    }
    ~OwnedPtr() = default;
};

}  // namespace ca
