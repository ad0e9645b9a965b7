#pragma once

#include "providers/openssl/TimeStamp.h"

#include <openssl/ts.h>

#include <span>
#include <string>
#include <vector>

namespace ca {

/// Has signatures stamped by the servers of `tsp.servers` (RFC 3161).
class CTimeStampClient {
  public:
    CTimeStampClient(const COpenSslLibrary& library, CStores& stores, const CChain& chain)
        : m_library(library), m_stores(stores), m_chain(chain) {}

    /// Whether the call's parameters ask for time stamps (TSP_STAMP).
    static bool IsWanted(const CProviderCall& call);

    /// The token over a signature's octets from the first server that gives a good one: granted,
    /// with the request's nonce, imprint and policy, its own signature right. Whether its signer is
    /// trusted is for those to say who verify.
    /// \param digest  of the signature; counts where the server's setting names none.
    /// Throws 16403 with the reason of the last one; each is told in the log.
    std::vector<unsigned char> Ask(const CProviderCall& call,
                                   std::span<const unsigned char> signature,
                                   const EVP_MD* digest) const;

  private:
    class CRequest;

    static std::vector<PkiTspServer> ServersOf(const CProviderCall& call);
    std::vector<unsigned char> AskOne(const CProviderCall& call, const PkiTspServer& server,
                                      std::span<const unsigned char> signature,
                                      const EVP_MD* digest) const;
    std::wstring Fault(const CProviderCall& call, const CRequest& request,
                       std::span<const unsigned char> token,
                       std::span<const unsigned char> signature) const;

    const COpenSslLibrary& m_library;
    CStores& m_stores;
    const CChain& m_chain;
};

}  // namespace ca
