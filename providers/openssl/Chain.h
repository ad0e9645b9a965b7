#pragma once

#include "common/PKIConfigFileParser.h"
#include "module/ProviderCall.h"
#include "providers/openssl/FetchedLists.h"
#include "providers/openssl/OcspResponders.h"
#include "providers/openssl/Trust.h"

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace ca {

/// Certificates and evidence of revocation that came with what is judged; nothing in them is trusted.
struct Companions {
    CertificatesPtr certificates;  ///< null: none
    CrlsPtr crls;                  ///< likewise
    std::vector<OcspAnswerPtr> answers = {};
};

/// How a certificate is judged; made of the call's parameters (docs/init-strings.md).
struct ChainRules {
    PkiPolicy policy;                   ///< of the configuration, for the certificate's use
    std::optional<std::time_t> time;    ///< none: now
    std::vector<std::string> policies;  ///< RFC 5280, 6.1.1 (c), dotted; empty: any
    bool isPolicyExplicit = false;      ///< (f)
    bool isMappingInhibited = false;    ///< (e)
    bool isAnyInhibited = false;        ///< (g)
};
/// Throws 16268 for a parameter that cannot be read.
ChainRules RulesOf(const CProviderCall& call, const PkiPolicy& policy);

/// The verdict on a certificate.
struct ChainVerdict {
    std::uint32_t code = 0;      ///< 16200, or one of 16201 to 16223
    std::wstring text;           ///< that of the code
    std::wstring reasons;        ///< why: lines for the certificate and its issuers
    std::vector<X509Ptr> chain;  ///< the certificate, then its issuers as far as they are known
};

/// Judges certificates by X509_verify_cert() and by the configuration's algorithms and usages.
class CChain {
  public:
    CChain(const COpenSslLibrary& library, CStores& stores, CTrust& trust)
        : m_library(library), m_trust(trust), m_lists(library), m_responders(library, stores) {}

    ChainVerdict Judge(const CProviderCall& call, X509* certificate, const Companions& companions,
                       const ChainRules& rules) const;
    /// The issuers of a certificate after it, as far as they are known; nothing is judged.
    std::vector<X509Ptr> Build(const CProviderCall& call, X509* certificate) const;

  private:
    // What is known of revocation at one look.
    struct Evidence {
        STACK_OF(X509_CRL) * lists = nullptr;
        OcspFindings findings = {};
    };
    ChainVerdict JudgeWith(const CProviderCall& call, X509* certificate,
                           const Companions& companions, const Evidence& evidence,
                           const ChainRules& rules, bool& isStateUnknown) const;
    OcspFindings AskResponders(const CProviderCall& call, const std::vector<X509Ptr>& path,
                               const Companions& companions, const ChainRules& rules) const;

    const COpenSslLibrary& m_library;
    CTrust& m_trust;
    mutable CFetchedLists m_lists;  // guards itself, as does the other
    mutable COcspResponders m_responders;
};

/// Code for one of OpenSSL's verdicts on a chain (X509_V_ERR_...), 16200 for X509_V_OK.
std::uint32_t VerdictCode(int error) noexcept;

}  // namespace ca
