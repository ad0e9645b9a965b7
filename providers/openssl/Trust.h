#pragma once

#include "providers/openssl/Stores.h"

#include <memory>
#include <vector>

namespace ca {

/// What chains are built from and end at, parsed. Nobody changes it any more.
struct TrustSnapshot {
    /// The trusted roots; the certificates of authorities, which are not anchors here because they
    /// are not self-signed; and the revocation lists that lie with them.
    TrustPtr store;
    std::vector<CrlPtr> crls;
    std::vector<StoreContentPtr> sources;  ///< what it was made of
};
using TrustPtrShared = std::shared_ptr<const TrustSnapshot>;

/// The trusted roots: the stores Root, the places of `trust.stores`, and the machine's where
/// `trust.useSystemRoots` says so; and what helps to build chains: the stores CA and the places of
/// `trust.intermediates`. Parsed once, and again when one of them changed. Safe from any thread.
class CTrust {
  public:
    CTrust(const COpenSslLibrary& library, CStores& stores)
        : m_library(library), m_stores(stores) {}
    CTrust(const CTrust&) = delete;
    CTrust& operator=(const CTrust&) = delete;
    ~CTrust() = default;

    TrustPtrShared Get(const CProviderCall& call);

  private:
    struct Sources {
        std::vector<StoreContentPtr> roots;
        std::vector<StoreContentPtr> helpers;
    };

    Sources Look(const CProviderCall& call);
    TrustPtrShared Parse(const Sources& sources) const;

    const COpenSslLibrary& m_library;
    CStores& m_stores;
    CForkMutex m_mutex;  // guards the latest one
    TrustPtrShared m_latest;
};

}  // namespace ca
