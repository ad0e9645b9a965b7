#pragma once

#include "module/ProviderCall.h"
#include "providers/openssl/KeptFetches.h"
#include "providers/openssl/OpenSslLibrary.h"

#include <memory>
#include <string>
#include <vector>

namespace ca {

/// Revocation lists from servers: those of `crl.sources`, and those of the distribution points that
/// certificates name. Kept in memory, the 64 that were fetched last, and in the files of
/// `crl.cacheDirectory`, for as long as the configuration says. Nothing is believed of a list here: whoever judges verifies it.
/// Safe from any thread.
class CFetchedLists {
  public:
    explicit CFetchedLists(const COpenSslLibrary& library) : m_library(library) {}
    CFetchedLists(const CFetchedLists&) = delete;
    CFetchedLists& operator=(const CFetchedLists&) = delete;
    ~CFetchedLists() = default;

    /// Adds the lists for certificates of a path. A server that does not answer, or with something
    /// else, is told in the log, and its list is missing. After a minute no other is asked.
    void Add(const CProviderCall& call, const std::vector<X509*>& certificates,
             STACK_OF(X509_CRL) * lists);

    /// Whether Add() would ask anybody.
    static bool HasSources(const CProviderCall& call, const std::vector<X509Ptr>& chain);

  private:
    struct Source {
        std::wstring url;
        int cacheTime;  ///< seconds
        int timeout;    ///< milliseconds
    };

    static std::vector<Source> SourcesOf(const CProviderCall& call, X509* certificate);
    std::shared_ptr<X509_CRL> Get(const CProviderCall& call, const Source& source);
    std::shared_ptr<X509_CRL> Fetch(const CProviderCall& call, const Source& source) const;

    const COpenSslLibrary& m_library;
    CKeptFetches<X509_CRL> m_kept{64};  // by URL
};

}  // namespace ca
