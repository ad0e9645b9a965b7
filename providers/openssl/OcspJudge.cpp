#include "providers/openssl/OcspJudge.h"

#include "common/Encode.h"
#include "common/Exception.h"
#include "providers/openssl/Algorithms.h"
#include "providers/openssl/ChainReasons.h"
#include "providers/openssl/PrivateKeys.h"
#include "providers/openssl/ProviderWords.h"

#include <openssl/x509v3.h>

#include <algorithm>
#include <span>

namespace {

constexpr std::time_t kClockSkew = 300;  // seconds that two machines' clocks may differ
constexpr int kMaxSigners = 8;           // certificates of an answer that are looked at

// Its clients may take what a delegate's certificate says for as long as it is valid, so a list
// that is missing revokes nobody (RFC 6960, 4.2.2.2.1); one that is there does.
int PassMissingList(int isGood, X509_STORE_CTX* context) {
    if (isGood != 0) {
        return isGood;
    }
    switch (X509_STORE_CTX_get_error(context)) {
        case X509_V_ERR_UNABLE_TO_GET_CRL:
        case X509_V_ERR_CRL_HAS_EXPIRED:
        case X509_V_ERR_CRL_NOT_YET_VALID:
        case X509_V_ERR_DIFFERENT_CRL_SCOPE:
            X509_STORE_CTX_set_error(context, X509_V_OK);
            return 1;
        default:
            return 0;
    }
}

// What the times of an answer about a certificate take from it; null: nothing. An answer of after
// the verdict's time is the better evidence, but once a certificate has expired a responder may
// have forgotten it (RFC 6960, 4.4.4).
const wchar_t* TimeFault(const ASN1_TIME* thisUpdate, const ASN1_TIME* nextUpdate,
                         const ca::OcspQuestion& question) {
    const auto begin = ca::SecondsOf(thisUpdate);
    const auto end = nextUpdate != nullptr ? ca::SecondsOf(nextUpdate) : begin;
    if (!begin || !end || *begin > std::time(nullptr) + kClockSkew) {
        return ca::Say(ca::Words::kOcspFuture);
    }
    const std::time_t last = *end + kClockSkew + (nextUpdate != nullptr ? 0 : question.freshFor);
    if (last < question.time) {
        return ca::Say(ca::Words::kOcspStale);
    }
    const auto expiry = ca::SecondsOf(X509_get0_notAfter(question.certificate));
    return !expiry || *begin > *expiry ? ca::Say(ca::Words::kOcspTooLate) : nullptr;
}

// The answer with its times.
std::wstring AnswerText(const ASN1_TIME* thisUpdate, const ASN1_TIME* nextUpdate) {
    std::wstring text = ca::Say(ca::Words::kOcspAnswer) + ca::TimeText(thisUpdate);
    if (nextUpdate != nullptr) {
        text += ca::Say(ca::Words::kValidTo) + ca::TimeText(nextUpdate);
    }
    return text;
}

}  // namespace

namespace ca {

const OcspFinding* FindingOf(const OcspFindings& findings, const X509* certificate) {
    const auto found = std::ranges::find_if(findings, [&](const OcspFinding& each) {
        return certificate != nullptr && each.certificate != nullptr &&
               X509_cmp(each.certificate.get(), certificate) == 0;
    });
    return found != findings.end() ? &*found : nullptr;
}

OcspFinding COcspJudge::Judge(OCSP_BASICRESP* answer, const OcspQuestion& question) const {
    X509_up_ref(question.certificate);
    OcspFinding finding{.certificate = X509Ptr(question.certificate)};
    OCSP_SINGLERESP* const single = FindSingle(answer, question);
    if (single == nullptr) {
        finding.words = Say(Words::kOcspOtherCertificate);
        return finding;
    }
    ASN1_GENERALIZEDTIME* revokedAt = nullptr;
    ASN1_GENERALIZEDTIME* begin = nullptr;
    ASN1_GENERALIZEDTIME* end = nullptr;
    const int status = OCSP_single_get0_status(single, nullptr, &revokedAt, &begin, &end);
    const wchar_t* fault = TimeFault(begin, end, question);
    fault = fault != nullptr ? fault : SignatureFault(answer, question);
    if (fault != nullptr) {
        finding.words = fault;
        return finding;
    }
    finding.words = AnswerText(begin, end);
    if (status == V_OCSP_CERTSTATUS_GOOD) {
        finding.state = OcspState::kGood;
    } else if (status == V_OCSP_CERTSTATUS_REVOKED) {
        const auto since = SecondsOf(revokedAt);
        const bool isLater = since && *since > question.time;
        finding.state = isLater ? OcspState::kGood : OcspState::kRevoked;
        finding.words += Say(Words::kRevokedAt) + TimeText(revokedAt);
        finding.words += isLater ? Say(Words::kRevokedLater) : L"";
    } else {
        finding.state = OcspState::kUnknown;
        finding.words = Say(Words::kOcspUnknown);
    }
    return finding;
}

// The certificate's own among those that an answer may hold.
OCSP_SINGLERESP* COcspJudge::FindSingle(OCSP_BASICRESP* answer,
                                        const OcspQuestion& question) const {
    const ASN1_INTEGER* const serial = X509_get0_serialNumber(question.certificate);
    for (int i = 0; i < OCSP_resp_count(answer); ++i) {
        OCSP_SINGLERESP* const each = OCSP_resp_get0(answer, i);
        const OCSP_CERTID* const id = OCSP_SINGLERESP_get0_id(each);
        ASN1_INTEGER* found = nullptr;
        OCSP_id_get0_info(nullptr, nullptr, nullptr, &found, const_cast<OCSP_CERTID*>(id));
        if (found != nullptr && ASN1_INTEGER_cmp(found, serial) == 0) {
            return IsAbout(id, question) ? each : nullptr;  // two of one number are no answer
        }
    }
    return nullptr;
}

// The same issuer, by the digests of its name and key with the algorithm of the answer (RFC 6960,
// 4.1.1).
bool COcspJudge::IsAbout(const OCSP_CERTID* id, const OcspQuestion& question) const {
    using IdPtr = Owned<OCSP_CERTID, &OCSP_CERTID_free>;
    ASN1_OBJECT* algorithm = nullptr;
    OCSP_id_get0_info(nullptr, &algorithm, nullptr, nullptr, const_cast<OCSP_CERTID*>(id));
    try {
        const DigestPtr digest = m_library.FindDigest(u16u8(Dotted(algorithm)));
        const IdPtr own(OCSP_cert_to_id(digest.get(), question.certificate, question.issuer));
        return own != nullptr && OCSP_id_cmp(own.get(), id) == 0;
    } catch (const Exception&) {
        return false;  // a digest that nobody has
    }
}

// ResponderID ::= CHOICE { byName [1] Name, byKey [2] KeyHash }     RFC 6960, 4.2.1
bool COcspJudge::IsResponder(const OCSP_BASICRESP* answer, X509* certificate) const {
    const ASN1_OCTET_STRING* keyHash = nullptr;
    const X509_NAME* name = nullptr;
    OCSP_resp_get0_id(answer, &keyHash, &name);
    if (name != nullptr) {
        return X509_NAME_cmp(name, X509_get_subject_name(certificate)) == 0;
    }
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned size = 0;
    const DigestPtr sha1 = m_library.FindDigest("SHA1");
    return keyHash != nullptr && X509_pubkey_digest(certificate, sha1.get(), digest, &size) == 1 &&
           std::ranges::equal(std::span(digest, size),
                              std::span(ASN1_STRING_get0_data(keyHash),
                                        static_cast<std::size_t>(ASN1_STRING_length(keyHash))));
}

// The issuer itself, or one that the issuer itself made a responder (RFC 6960, 4.2.2.2).
bool COcspJudge::HasRight(const OCSP_BASICRESP* answer, X509* signer,
                          const OcspQuestion& question) const {
    if (X509_cmp(signer, question.issuer) == 0) {
        return true;
    }
    const bool isForAnswers = (X509_get_extension_flags(signer) & EXFLAG_XKUSAGE) != 0 &&
                              (X509_get_extended_key_usage(signer) & XKU_OCSP_SIGN) != 0;
    const TrustPtr issuerOnly(X509_STORE_new());
    const ChainContextPtr context(X509_STORE_CTX_new_ex(m_library.Context(), nullptr));
    if (!isForAnswers || issuerOnly == nullptr || context == nullptr ||
        X509_STORE_add_cert(issuerOnly.get(), question.issuer) != 1 ||
        X509_STORE_CTX_init(context.get(), issuerOnly.get(), signer, nullptr) != 1) {
        return false;
    }
    X509_STORE_CTX_set0_crls(context.get(), question.lists);
    X509_STORE_CTX_set_verify_cb(context.get(), &PassMissingList);
    X509_VERIFY_PARAM* const param = X509_STORE_CTX_get0_param(context.get());
    X509_VERIFY_PARAM_set_flags(param, X509_V_FLAG_PARTIAL_CHAIN | X509_V_FLAG_CRL_CHECK |
                                           X509_V_FLAG_EXTENDED_CRL_SUPPORT);
    X509_VERIFY_PARAM_set_depth(param, 0);
    X509_VERIFY_PARAM_set_purpose(param, X509_PURPOSE_OCSP_HELPER);
    const auto produced = SecondsOf(OCSP_resp_get0_produced_at(answer));
    X509_VERIFY_PARAM_set_time(param, std::max(question.time, produced.value_or(0)));
    const EVP_PKEY* const key = X509_get0_pubkey(signer);
    return X509_verify_cert(context.get()) == 1 && key != nullptr && IsKeyAllowed(m_allowed, key);
}

// Certificates of an answer are read again: OpenSSL made them in the context of the host.
const wchar_t* COcspJudge::SignatureFault(const OCSP_BASICRESP* answer,
                                          const OcspQuestion& question) const {
    const X509_ALGOR* const algorithm = OCSP_resp_get0_tbs_sigalg(answer);
    if (!IsSignatureAllowed(m_allowed, Dotted(algorithm->algorithm))) {
        return Say(Words::kAlgorithmsNotAllowed);
    }
    std::vector<X509Ptr> candidates;
    const auto add = [&](X509* each) {
        X509_up_ref(each);
        candidates.emplace_back(each);
    };
    add(question.responder != nullptr ? question.responder : question.issuer);
    const STACK_OF(X509)* const sent = OCSP_resp_get0_certs(answer);
    for (int i = 0; question.responder == nullptr && i < std::min(sk_X509_num(sent), kMaxSigners);
         ++i) {
        try {
            candidates.push_back(m_library.ReadCertificate(EncodingOf(sk_X509_value(sent, i))));
        } catch (const Exception&) {
            continue;  // one that cannot be read has signed nothing
        }
    }
    const wchar_t* fault = Say(Words::kOcspNoRight);
    for (const X509Ptr& each : candidates) {
        EVP_PKEY* const key = X509_get0_pubkey(each.get());
        const bool isNamed = question.responder != nullptr;
        if (key == nullptr || !IsResponder(answer, each.get()) ||
            (!isNamed && !HasRight(answer, each.get(), question))) {
            continue;
        }
        if (ASN1_item_verify_ex(ASN1_ITEM_rptr(OCSP_RESPDATA), algorithm,
                                OCSP_resp_get0_signature(answer), OCSP_resp_get0_respdata(answer),
                                nullptr, key, m_library.Context(), nullptr) == 1) {
            return nullptr;
        }
        fault = Say(Words::kOcspSignature);
    }
    return fault;
}

}  // namespace ca
