#include "providers/openssl/OcspResponders.h"

#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/ErrorMessageHelper.h"
#include "common/Exception.h"
#include "common/Http.h"
#include "common/Log.h"
#include "common/sha1.h"
#include "providers/openssl/ChainReasons.h"
#include "providers/openssl/PrivateKeys.h"
#include "providers/openssl/ProviderWords.h"

#include <openssl/rand.h>
#include <openssl/x509v3.h>

#include <algorithm>

namespace {

constexpr std::size_t kMaxResponders = 4;       // of one certificate that are asked
constexpr std::uint32_t kMaxAnswer = 1U << 20;  // octets; whole ones take a few thousand
constexpr std::int64_t kMaxSeconds = 60;
constexpr int kSilentSeconds = 10;  // in which a responder that did not answer is not asked again
constexpr int kNonceSize = 16;      // octets; RFC 8954, 2.1 allows 1 to 32
constexpr int kNonceOther = 0;      // of OCSP_check_nonce(): both have one, and they differ

using TextsPtr = ca::Owned<STACK_OF(OPENSSL_STRING), &X509_email_free>;

// Says in the log what a client reads in the verdict.
ca::OcspFinding Refuse(std::wstring words, const std::wstring& url) {
    ca::LogLine(ca::Say(ca::Words::kOcspRefused) + words + L": " + url, /*isError=*/true);
    return {.state = ca::OcspState::kNone, .words = std::move(words)};
}

}  // namespace

namespace ca {

/// OCSPRequest about one certificate (RFC 6960, 4.1.1), not signed.
class COcspResponders::CRequest {
  public:
    CRequest(const COpenSslLibrary& library, const OcspQuestion& question, bool hasNonce)
        : m_request(Require(OCSP_REQUEST_new(), kErrExecution)) {
        const DigestPtr sha1 = library.FindDigest("SHA1");  // the one that all responders know
        Owned<OCSP_CERTID, &OCSP_CERTID_free> id(Require(
            OCSP_cert_to_id(sha1.get(), question.certificate, question.issuer), kErrExecution));
        Require(OCSP_request_add0_id(m_request.get(), id.get()), kErrExecution);
        static_cast<void>(id.release());  // the request owns it now
        if (hasNonce) {
            unsigned char nonce[kNonceSize];
            Require(RAND_bytes_ex(library.Context(), nonce, sizeof nonce, /*strength=*/0),
                    kErrExecution);
            Require(OCSP_request_add1_nonce(m_request.get(), nonce, sizeof nonce), kErrExecution);
        }
    }

    std::vector<unsigned char> Encoding() const {
        unsigned char* octets = nullptr;
        const int size = Require(i2d_OCSP_REQUEST(m_request.get(), &octets), kErrExecution);
        const OctetsPtr owner(octets);
        return {octets, octets + size};
    }

    // Responders that prepare their answers leave the nonce out, as RFC 6960, 4.4.1 lets them: then
    // the answer's times alone say that it is no old one.
    bool FitsNonce(OCSP_BASICRESP* answer) const {
        return OCSP_check_nonce(m_request.get(), answer) != kNonceOther;
    }

  private:
    Owned<OCSP_REQUEST, &OCSP_REQUEST_free> m_request;
};

bool COcspResponders::AreAsked(const CProviderCall& call) {
    return call.Params().GetUnsigned(L"OCSP_CHECK", 0, 1, call.Pki().ocsp.enabled ? 1 : 0) == 1;
}

std::vector<COcspResponders::Source> COcspResponders::SourcesOf(const CProviderCall& call,
                                                                X509* certificate) {
    const PkiOcsp& ocsp = call.Pki().ocsp;
    const std::wstring issuer = NameText(X509_get_issuer_name(certificate));
    std::vector<Source> sources;
    if (!AreAsked(call)) {
        return sources;
    }
    for (const PkiOcspResponder& each : ocsp.responders) {
        if (each.issuer.empty() || each.issuer == issuer) {
            sources.push_back({each.url, each.certificate, each.cacheTime, each.timeout});
        }
    }
    const TextsPtr named(ocsp.useCertificateResponders ? X509_get1_ocsp(certificate) : nullptr);
    const int count = std::min(sk_OPENSSL_STRING_num(named.get()), int{kMaxResponders});
    for (int i = 0; i < count; ++i) {
        const std::string url = sk_OPENSSL_STRING_value(named.get(), i);
        if (url.starts_with("http://") || url.starts_with("https://")) {
            sources.push_back({u8u16(url), {}, ocsp.cacheTime, ocsp.timeout});
        }
    }
    return sources;
}

OcspFindings COcspResponders::Look(const CProviderCall& call, const OcspSearch& search) {
    const COcspJudge judge(m_library, call.Pki().algorithms);
    const std::int64_t end = SteadySeconds() + kMaxSeconds;
    OcspFindings findings;
    for (std::size_t i = 0; i + 1 < search.chain.size(); ++i) {
        findings.push_back(LookAt(call, judge, search,
                                  {.certificate = search.chain[i].get(),
                                   .issuer = search.chain[i + 1].get(),
                                   .time = search.time,
                                   .responder = nullptr,
                                   .lists = search.lists,
                                   .freshFor = call.Pki().ocsp.cacheTime},
                                  end));
        X509_up_ref(search.chain[i].get());
        findings.back().certificate.reset(search.chain[i].get());
    }
    return findings;
}

// What came with the message first. A responder that does not know the certificate leaves it to the
// next one.
OcspFinding COcspResponders::LookAt(const CProviderCall& call, const COcspJudge& judge,
                                    const OcspSearch& search, OcspQuestion question,
                                    std::int64_t end) {
    OcspFinding latest;
    for (const OcspAnswerPtr& answer : search.fromMessage) {
        OcspFinding finding = judge.Judge(answer.get(), question);
        if (IsDecided(finding)) {
            finding.words += Say(Words::kFromMessage);
            return finding;
        }
        // One about another certificate of the path is no fault.
        if (finding.words != Say(Words::kOcspOtherCertificate)) {
            latest = std::move(finding);
        }
    }
    for (const Source& source : SourcesOf(call, question.certificate)) {
        const X509Ptr signer = source.signer.empty() ? nullptr : ReadSigner(source.signer);
        if (SteadySeconds() >= end || (signer == nullptr && !source.signer.empty())) {
            continue;
        }
        question.responder = signer.get();
        question.freshFor = source.cacheTime;
        latest = Ask(call, judge, source, question, end);
        if (IsDecided(latest)) {
            latest.words += Say(Words::kFromServer);
            return latest;
        }
    }
    if (latest.words.empty() && AreAsked(call)) {
        latest.words = Say(Words::kOcspNone);
    }
    return latest;
}

OcspFinding COcspResponders::Ask(const CProviderCall& call, const COcspJudge& judge,
                                 const Source& source, const OcspQuestion& question,
                                 std::int64_t end) {
    const std::wstring key = source.url + L' ' + Sha1Hex(EncodingOf(question.certificate));
    if (const auto kept = m_kept.Find(key, source.cacheTime)) {
        OcspFinding finding = judge.Judge(kept.get(), question);
        if (IsDecided(finding)) {
            return finding;
        }
    }
    if (const auto words = m_silent.Find(source.url, kSilentSeconds)) {
        return {.state = OcspState::kNone, .words = *words};
    }
    const bool hasNonce =
        call.Params().GetUnsigned(L"OCSP_NONCE", 0, 1, call.Pki().ocsp.nonce ? 1 : 0) == 1;
    const CRequest request(m_library, question, hasNonce);
    HttpSettings settings = call.FetchSettings();
    const auto left = static_cast<std::uint32_t>(std::max<std::int64_t>(end - SteadySeconds(), 1));
    const auto timeout = static_cast<std::uint32_t>(source.timeout);
    settings.totalTimeoutMs = std::min(HttpSettings::BoundedTimeout(timeout), left * 1000);
    settings.maxBodySize = kMaxAnswer;
    BytePtr body;
    unsigned length = 0;
    try {
        Http::Ask(source.url, "application/ocsp-request", request.Encoding(), settings, body,
                  length);
    } catch (const Exception& e) {
        // Deliberate: the transfer said why in the log; without an answer the state is not known.
        const std::wstring words =
            Say(Words::kOcspNotFetched) + ::GetErrorMessage(e.errorCode, /*prefix=*/false);
        // What one request may not ask, another one may.
        if (e.errorCode == kErrConnection) {
            m_silent.Keep(source.url, std::make_shared<const std::wstring>(words));
        }
        return Refuse(words, source.url);
    }
    OcspAnswerPtr answer = COpenSslLibrary::ReadOcspAnswer({body.Get(), length});
    if (answer == nullptr) {
        return Refuse(Say(Words::kOcspNoAnswer), source.url);
    }
    if (!request.FitsNonce(answer.get())) {
        return Refuse(Say(Words::kOcspWrongNonce), source.url);
    }
    OcspFinding finding = judge.Judge(answer.get(), question);
    if (!IsDecided(finding)) {
        return finding.state == OcspState::kUnknown ? std::move(finding)
                                                    : Refuse(finding.words, source.url);
    }
    if (source.cacheTime != 0) {
        m_kept.Keep(key, {answer.release(), &OCSP_BASICRESP_free});
    }
    return finding;
}

// Null, with a line in the log, for a file without a certificate.
X509Ptr COcspResponders::ReadSigner(const std::wstring& path) {
    const StoreContentPtr content = m_stores.At(PathFromWString(path));
    try {
        if (!content->certificates.empty()) {
            return m_library.ReadCertificate(content->certificates.front().der);
        }
    } catch (const Exception&) {
        // Deliberate: what OpenSSL cannot read is told as none.
    }
    LogLine(Say(Words::kOcspNoSigner) + path, /*isError=*/true);
    return nullptr;
}

}  // namespace ca
