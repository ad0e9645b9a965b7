#pragma once

#include "providers/openssl/Owners.h"
#include "providers/openssl/RecentObjects.h"

#include <openssl/provider.h>

#include <cstdint>
#include <span>
#include <string>
#include <type_traits>

namespace ca {

/// A library context of OpenSSL for this provider alone: what the host configured in its own, with
/// a configuration file, engines or default properties, does not count here, and nothing that is
/// done here changes it. Safe from any thread.
class COpenSslLibrary {
  public:
    /// Throws ca::Exception 16400 when OpenSSL has no default provider to give.
    COpenSslLibrary();
    COpenSslLibrary(const COpenSslLibrary&) = delete;
    COpenSslLibrary& operator=(const COpenSslLibrary&) = delete;
    ~COpenSslLibrary();

    OSSL_LIB_CTX* Context() const noexcept { return m_context; }

    /// Readies GOST where octets of DER name one of its algorithms; false when they do and there is
    /// none, see CGostEngine.
    bool PrepareFor(std::span<const unsigned char> octets) const;

    /// The certificate of exactly these octets; the same object for the same octets when they came
    /// lately, so nobody changes it. Throws 16113.
    X509Ptr ReadCertificate(std::span<const unsigned char> der) const;
    /// The revocation list that octets begin with; null for none.
    CrlPtr ReadCrl(std::span<const unsigned char> der) const;
    /// The answer in an OCSPResponse, or a BasicOCSPResponse alone (RFC 6960, 4.2.1); null for what
    /// is none, and for a response that tells of a failure.
    static OcspAnswerPtr ReadOcspAnswer(std::span<const unsigned char> der);
    /// The digest of a name ("SHA256") or dotted identifier. Throws 16303 for one that there is not.
    DigestPtr FindDigest(const std::string& name) const;
    /// Private keys of files that are not encrypted.
    RecentKeys& Keys() const noexcept { return m_keys; }

  private:
    bool LoadGost() const;

    OSSL_LIB_CTX* m_context;
    OSSL_PROVIDER* m_default;
    OSSL_PROVIDER* m_legacy;        // null: not installed
    mutable CForkMutex m_mutex;     // guards m_gost
    mutable OSSL_PROVIDER* m_gost;  // digests of GOST; null: not needed yet, or not installed
    mutable RecentCertificates m_certificates;
    mutable RecentKeys m_keys;
};

/// Keeps the thread's queue of OpenSSL errors, which is the host's too, as it was before.
class CErrorScope {
  public:
    CErrorScope() noexcept;
    CErrorScope(const CErrorScope&) = delete;
    CErrorScope& operator=(const CErrorScope&) = delete;
    ~CErrorScope();
};

/// Throws what the latest failure of OpenSSL in this thread means: its code by
/// OpenSslFaultTable.inc, else `code`; what OpenSSL says of it is the exception's text, for the log.
[[noreturn]] void ThrowOpenSsl(std::uint32_t code, const char* file = __builtin_FILE(),
                               long line = __builtin_LINE());

/// Throws likewise for a null object or a result that is not positive.
template <class T>
T Require(T result, std::uint32_t code, const char* file = __builtin_FILE(),
          long line = __builtin_LINE()) {
    bool isGood = false;
    if constexpr (std::is_pointer_v<T>) {
        isGood = result != nullptr;
    } else {
        isGood = result > 0;
    }
    if (!isGood) {
        ThrowOpenSsl(code, file, line);
    }
    return result;
}

/// A view of octets as OpenSSL reads them; for fewer than 2^31 octets, else 16268.
BioPtr ReadingBio(std::span<const unsigned char> octets);

/// A view of what a string of OpenSSL's holds.
inline std::span<const unsigned char> OctetsOf(const ASN1_STRING* string) {
    return {ASN1_STRING_get0_data(string), static_cast<std::size_t>(ASN1_STRING_length(string))};
}

}  // namespace ca
