#pragma once

#include "common/PKIConfigFileParser.h"
#include "providers/openssl/OpenSslLibrary.h"

#include <cstdint>
#include <ctime>
#include <string>
#include <vector>

namespace ca {

enum class OcspState : std::uint8_t {
    kNone,  ///< no answer that is believed
    kGood,
    kRevoked,
    kUnknown,  ///< the responder does not know the certificate
};

/// How a certificate stands as an OCSP answer tells it.
struct OcspFinding {
    OcspState state = OcspState::kNone;
    std::wstring words = {};   ///< for the verdict: which answer, or why none; "": nobody was asked
    X509Ptr certificate = {};  ///< the one it is about
};
/// Whether it says how the certificate stands.
inline bool IsDecided(const OcspFinding& finding) noexcept {
    return finding.state == OcspState::kGood || finding.state == OcspState::kRevoked;
}
using OcspFindings = std::vector<OcspFinding>;
/// The finding about a certificate; null: there is none.
const OcspFinding* FindingOf(const OcspFindings& findings, const X509* certificate);

/// What an answer is judged for.
struct OcspQuestion {
    X509* certificate;
    X509* issuer;
    std::time_t time;            ///< of the verdict
    X509* responder;             ///< who must have signed the answer; null: who has the right
    STACK_OF(X509_CRL) * lists;  ///< may revoke a responder; null: none
    int freshFor;                ///< seconds that an answer without an end counts
};

/// Judges OCSP answers (RFC 6960, 3.2): the certificate that is meant, times, signature, and the
/// right of the one who signed.
class COcspJudge {
  public:
    COcspJudge(const COpenSslLibrary& library, const PkiAlgorithms& allowed)
        : m_library(library), m_allowed(allowed) {}

    OcspFinding Judge(OCSP_BASICRESP* answer, const OcspQuestion& question) const;

  private:
    OCSP_SINGLERESP* FindSingle(OCSP_BASICRESP* answer, const OcspQuestion& question) const;
    bool IsAbout(const OCSP_CERTID* id, const OcspQuestion& question) const;
    bool IsResponder(const OCSP_BASICRESP* answer, X509* certificate) const;
    bool HasRight(const OCSP_BASICRESP* answer, X509* signer, const OcspQuestion& question) const;
    const wchar_t* SignatureFault(const OCSP_BASICRESP* answer, const OcspQuestion& question) const;

    const COpenSslLibrary& m_library;
    const PkiAlgorithms& m_allowed;
};

}  // namespace ca
