#pragma once

#include <span>

namespace ca {

/// OpenSSL's engine "gost" (Debian: libengine-gost-openssl), which alone has the keys and signatures
/// of GOST R 34.10. Engines belong to the process, so it is loaded only when something names an
/// algorithm of GOST, stays out of the list that the host sees, and is registered for nothing but
/// the forms of its own keys, which OpenSSL does not know otherwise. One that the host has loaded is
/// used as it is.
class CGostEngine {
  public:
    CGostEngine() = delete;

    /// Whether octets of DER name an algorithm below 1.2.643, the arc of Russia.
    static bool IsNamedIn(std::span<const unsigned char> octets) noexcept;
    /// Loads it when that was not tried yet; false when there is none. Safe from any thread.
    static bool Load();
};

}  // namespace ca
