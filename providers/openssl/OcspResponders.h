#pragma once

#include "module/ProviderCall.h"
#include "providers/openssl/KeptFetches.h"
#include "providers/openssl/OcspJudge.h"
#include "providers/openssl/Stores.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ca {

/// What the states of a path's certificates are looked up with.
struct OcspSearch {
    const std::vector<X509Ptr>& chain;  ///< the path, its root last
    const std::vector<OcspAnswerPtr>& fromMessage;
    STACK_OF(X509_CRL) * lists;  ///< may revoke responders; null: none
    std::time_t time;            ///< of the verdict
};

/// The states of certificates from OCSP: from answers that are there, and from responders: those of
/// `ocsp.responders`, and those that certificates name (RFC 5280, 4.2.2.1). Answers that were
/// believed are kept in memory for as long as the configuration says. Safe from any thread.
class COcspResponders {
  public:
    COcspResponders(const COpenSslLibrary& library, CStores& stores)
        : m_library(library), m_stores(stores) {}
    COcspResponders(const COcspResponders&) = delete;
    COcspResponders& operator=(const COcspResponders&) = delete;
    ~COcspResponders() = default;

    /// A finding for each certificate but the root. A responder that does not answer, or with what
    /// is not believed, is told in the log; one that did not answer is left alone for ten seconds.
    /// After a minute no other is asked.
    OcspFindings Look(const CProviderCall& call, const OcspSearch& search);

    /// Whether the call has responders asked.
    static bool AreAsked(const CProviderCall& call);

  private:
    struct Source {
        std::wstring url;
        std::wstring signer;  ///< path of the certificate that must have signed; "": none
        int cacheTime;        ///< seconds
        int timeout;          ///< milliseconds
    };
    class CRequest;

    static std::vector<Source> SourcesOf(const CProviderCall& call, X509* certificate);
    OcspFinding LookAt(const CProviderCall& call, const COcspJudge& judge, const OcspSearch& search,
                       OcspQuestion question, std::int64_t end);
    OcspFinding Ask(const CProviderCall& call, const COcspJudge& judge, const Source& source,
                    const OcspQuestion& question, std::int64_t end);
    X509Ptr ReadSigner(const std::wstring& path);

    const COpenSslLibrary& m_library;
    CStores& m_stores;
    CKeptFetches<OCSP_BASICRESP> m_kept{256};       // by URL and certificate
    CKeptFetches<const std::wstring> m_silent{64};  // why there was no answer, by URL
};

}  // namespace ca
