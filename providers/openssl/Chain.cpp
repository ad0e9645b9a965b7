#include "providers/openssl/Chain.h"

#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/ErrorMessageHelper.h"
#include "common/Exception.h"
#include "common/InitString.h"
#include "common/Lng.h"
#include "providers/openssl/Algorithms.h"
#include "providers/openssl/ChainReasons.h"
#include "providers/openssl/Policies.h"
#include "providers/openssl/ProviderWords.h"

#include <openssl/x509v3.h>

#include <algorithm>
#include <iterator>
#include <limits>

namespace {

struct VerdictRow {
    int error;
    std::uint32_t code;
    const wchar_t* english;
    const wchar_t* russian;
};

constexpr VerdictRow kVerdicts[] = {
#define CA_VERDICT(error, code, english, russian) {X509_V_ERR_##error, ca::code, english, russian},
#include "providers/openssl/VerdictTable.inc"
#undef CA_VERDICT
};

// Why, in the current language.
std::wstring VerdictWords(int error) {
    const auto* const row = std::ranges::find(kVerdicts, error, &VerdictRow::error);
    if (row == std::end(kVerdicts)) {
        return ca::u8u16(X509_verify_cert_error_string(error));
    }
    return IsRussian() ? row->russian : row->english;
}

// Another hold on the same list.
X509_CRL* SameList(const X509_CRL* list) {
    auto* const same = const_cast<X509_CRL*>(list);
    X509_CRL_up_ref(same);
    return same;
}

// What a policy that takes an unknown state passes over: there is no list, or none that counts now.
constexpr int kUnknownState[] = {X509_V_ERR_UNABLE_TO_GET_CRL, X509_V_ERR_CRL_HAS_EXPIRED,
                                 X509_V_ERR_CRL_NOT_YET_VALID, X509_V_ERR_DIFFERENT_CRL_SCOPE,
                                 X509_V_ERR_UNABLE_TO_GET_CRL_ISSUER};

// What OpenSSL's callback gets through the context's application data.
struct CallbackData {
    const ca::ChainRules& rules;
    const ca::OcspFindings& findings;
    bool isStateUnknown = false;               // of revocation, for a certificate of the path
    const X509_CRL* unbelievedList = nullptr;  // the last one that an OCSP answer made needless
    X509_CRL* latestList = nullptr;            // that was asked about
    const X509* latestCertificate = nullptr;   // with it
};

// The anchor: nobody revokes a root.
bool IsAtRoot(const X509_STORE_CTX* context) {
    const int depth = X509_STORE_CTX_get_error_depth(context);
    X509* const certificate = X509_STORE_CTX_get_current_cert(context);
    return depth > 0 && depth + 1 == sk_X509_num(X509_STORE_CTX_get0_chain(context)) &&
           X509_self_signed(certificate, /*verify_signature=*/0) == 1;
}

// A list of after the verdict's time, but not of the future, is the better evidence; only when the
// certificate had expired by then the list may have dropped it.
bool IsLaterList(const X509_STORE_CTX* context, const X509_CRL* list, std::time_t time) {
    const auto begin = list != nullptr ? ca::SecondsOf(X509_CRL_get0_lastUpdate(list)) : time;
    const auto expiry = ca::SecondsOf(X509_get0_notAfter(X509_STORE_CTX_get_current_cert(context)));
    return begin && expiry && *begin > time && *begin <= std::time(nullptr) && *begin <= *expiry;
}

// The list that is looked at. OpenSSL forgets it once it has told that its times are wrong.
X509_CRL* CurrentList(const X509_STORE_CTX* context, CallbackData& data) {
    const X509* const certificate = X509_STORE_CTX_get_current_cert(context);
    X509_CRL* const list = X509_STORE_CTX_get0_current_crl(context);
    if (list != nullptr || data.latestCertificate != certificate) {
        data.latestList = list;
        data.latestCertificate = certificate;
    }
    return data.latestList;
}

// Revoked, but not yet at the verdict's time.
bool IsRevokedLater(const X509_STORE_CTX* context, X509_CRL* list, std::time_t time) {
    X509_REVOKED* entry = nullptr;
    if (list == nullptr ||
        X509_CRL_get0_by_cert(list, &entry, X509_STORE_CTX_get_current_cert(context)) != 1) {
        return false;
    }
    const auto since = ca::SecondsOf(X509_REVOKED_get0_revocationDate(entry));
    return since && *since > time;
}

// The lists do not tell how a certificate stands.
bool IsStateOpen(int error) {
    const std::uint32_t code = ca::VerdictCode(error);
    return code == ca::kChainRevocationUnknown || code == ca::kChainRevocationOffline;
}

// Whether an OCSP answer makes up for what is wrong with a list, or with having none. What a list
// says that could not be verified does not count then either.
bool IsAnswered(const X509_STORE_CTX* context, const X509_CRL* list, int error,
                CallbackData& data) {
    const ca::OcspFinding* const finding =
        ca::FindingOf(data.findings, X509_STORE_CTX_get_current_cert(context));
    if (finding == nullptr || finding->state != ca::OcspState::kGood) {
        return false;
    }
    if (error == X509_V_ERR_CERT_REVOKED) {
        return list != nullptr && list == data.unbelievedList;
    }
    if (!IsStateOpen(error)) {
        return false;
    }
    const bool isBelieved = ca::VerdictCode(error) == ca::kChainRevocationOffline;
    data.unbelievedList = isBelieved ? data.unbelievedList : list;
    return true;
}

bool IsPassed(const X509_STORE_CTX* context, int error, CallbackData& data) {
    const std::time_t time = data.rules.time.value_or(std::time(nullptr));
    const bool isUnknown = std::ranges::find(kUnknownState, error) != std::end(kUnknownState);
    X509_CRL* const list = CurrentList(context, data);
    if ((isUnknown && IsAtRoot(context)) || IsAnswered(context, list, error, data) ||
        (error == X509_V_ERR_CRL_NOT_YET_VALID && IsLaterList(context, list, time)) ||
        (error == X509_V_ERR_CERT_REVOKED && IsRevokedLater(context, list, time))) {
        return true;
    }
    data.isStateUnknown = data.isStateUnknown || isUnknown;
    const ca::PkiPolicy& policy = data.rules.policy;
    return (isUnknown && policy.revocation == ca::RevocationCheck::kIfKnown) ||
           (policy.allowSelfSigned && error == X509_V_ERR_DEPTH_ZERO_SELF_SIGNED_CERT);
}

// The path of a list's issuer is judged in a context of its own, which has no such data: nothing is
// passed over there.
int PassOver(int isGood, X509_STORE_CTX* context) {
    auto* const data = static_cast<CallbackData*>(X509_STORE_CTX_get_app_data(context));
    if (data == nullptr || isGood != 0) {
        return isGood;
    }
    const int error = X509_STORE_CTX_get_error(context);
    if (!IsPassed(context, error, *data)) {
        const ca::OcspFinding* const finding =
            ca::FindingOf(data->findings, X509_STORE_CTX_get_current_cert(context));
        if (IsStateOpen(error) && finding != nullptr && finding->state == ca::OcspState::kRevoked) {
            X509_STORE_CTX_set_error(context, X509_V_ERR_CERT_REVOKED);
        }
        return 0;
    }
    X509_STORE_CTX_set_error(context, X509_V_OK);
    return 1;
}

// What OCSP says against a path that holds otherwise, with the index of the certificate. Without
// lists nothing else tells of a state that the policy asks for.
int RevocationError(const std::vector<ca::X509Ptr>& path, const ca::OcspFindings& findings,
                    bool isStateNeeded, int& depth) {
    for (std::size_t i = 0; i + 1 < path.size(); ++i) {
        const ca::OcspFinding* const finding = ca::FindingOf(findings, path[i].get());
        const ca::OcspState state = finding != nullptr ? finding->state : ca::OcspState::kNone;
        depth = static_cast<int>(i);
        if (state == ca::OcspState::kRevoked) {
            return X509_V_ERR_CERT_REVOKED;
        }
        if (isStateNeeded && state != ca::OcspState::kGood) {
            return X509_V_ERR_UNABLE_TO_GET_CRL;
        }
    }
    return X509_V_OK;
}

void SetRules(X509_VERIFY_PARAM* param, const ca::PkiSettings& pki, const ca::ChainRules& rules) {
    unsigned long flags =
        X509_V_FLAG_CHECK_SS_SIGNATURE | X509_V_FLAG_TRUSTED_FIRST | X509_V_FLAG_POLICY_CHECK;
    flags |= rules.policy.checkTime ? 0 : X509_V_FLAG_NO_CHECK_TIME;
    const bool isRevocationChecked =
        pki.crl.enabled && rules.policy.revocation != ca::RevocationCheck::kNone;
    flags |= isRevocationChecked ? X509_V_FLAG_CRL_CHECK | X509_V_FLAG_CRL_CHECK_ALL |
                                       X509_V_FLAG_EXTENDED_CRL_SUPPORT | X509_V_FLAG_USE_DELTAS
                                 : 0;
    flags |= rules.isPolicyExplicit ? X509_V_FLAG_EXPLICIT_POLICY : 0;
    flags |= rules.isMappingInhibited ? X509_V_FLAG_INHIBIT_MAP : 0;
    flags |= rules.isAnyInhibited ? X509_V_FLAG_INHIBIT_ANY : 0;
    X509_VERIFY_PARAM_set_flags(param, flags);
    X509_VERIFY_PARAM_set_depth(param, pki.trust.maxPathLength);
    if (rules.time) {
        X509_VERIFY_PARAM_set_time(param, *rules.time);
    }
    std::vector<std::string> policies = rules.policies;
    if (policies.empty()) {
        policies.emplace_back("2.5.29.32.0");  // without one, OpenSSL takes the empty set
    }
    for (const std::string& policy : policies) {
        X509_VERIFY_PARAM_add0_policy(
            param, ca::Require(OBJ_txt2obj(policy.c_str(), /*no_name=*/1), ca::kErrParameters));
    }
}

// The anchor's own signature proves nothing, so its algorithm does not count.
bool HasAllowedAlgorithms(const std::vector<ca::X509Ptr>& chain, const ca::PkiAlgorithms& allowed) {
    for (std::size_t i = 0; i < chain.size(); ++i) {
        const X509_ALGOR* algorithm = nullptr;
        X509_get0_signature(nullptr, &algorithm, chain[i].get());
        const bool isAnchor = i != 0 && i + 1 == chain.size();
        const EVP_PKEY* const key = X509_get0_pubkey(chain[i].get());
        if ((!isAnchor && !ca::IsSignatureAllowed(allowed, ca::Dotted(algorithm->algorithm))) ||
            key == nullptr || !ca::IsKeyAllowed(allowed, key)) {
            return false;
        }
    }
    return true;
}

std::vector<ca::X509Ptr> ChainOf(const STACK_OF(X509) * built) {
    std::vector<ca::X509Ptr> chain;
    for (int i = 0; i < sk_X509_num(built); ++i) {
        X509* const each = sk_X509_value(built, i);
        X509_up_ref(each);
        chain.emplace_back(each);
    }
    return chain;
}

}  // namespace

namespace ca {

std::uint32_t VerdictCode(int error) noexcept {
    if (error == X509_V_OK) {
        return kErrChainValid;
    }
    const auto* const row = std::ranges::find(kVerdicts, error, &VerdictRow::error);
    return row != std::end(kVerdicts) ? row->code : kChainWrongUsage;
}

ChainRules RulesOf(const CProviderCall& call, const PkiPolicy& policy) {
    const InitString params = call.Params();
    ChainRules rules;
    rules.policy = policy;
    constexpr auto kLatest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (params.Find(L"VERIFY_TIME") != nullptr) {
        rules.time = static_cast<std::time_t>(params.GetUnsigned(L"VERIFY_TIME", 0, kLatest, 0));
    }
    rules.policies = PolicySetOf(params, policy);
    rules.isPolicyExplicit = !policy.certificatePolicies.empty();
    const auto isSet = [&](const wchar_t* name) { return params.GetUnsigned(name, 0, 1, 0) == 1; };
    rules.isPolicyExplicit = isSet(L"POLICY_EXPLICIT") || rules.isPolicyExplicit;
    rules.isMappingInhibited = isSet(L"POLICY_INHIBIT_MAPPING");
    rules.isAnyInhibited = isSet(L"POLICY_INHIBIT_ANY");
    return rules;
}

// Servers are asked for what is missing, and only for a path that holds but for it: OpenSSL looks at
// revocation before it verifies signatures, and a certificate that anybody made up must not name
// what is asked. OCSP comes first; lists are fetched for those that it leaves open.
ChainVerdict CChain::Judge(const CProviderCall& call, X509* certificate,
                           const Companions& companions, const ChainRules& rules) const {
    bool isStateUnknown = false;
    Evidence evidence{.lists = companions.crls.get()};
    ChainVerdict verdict =
        JudgeWith(call, certificate, companions, evidence, rules, isStateUnknown);
    const bool isOcspUsed = rules.policy.revocation != RevocationCheck::kNone &&
                            (COcspResponders::AreAsked(call) || !companions.answers.empty());
    if (verdict.code == kChainRevoked ||
        (!isOcspUsed && (!isStateUnknown || !CFetchedLists::HasSources(call, verdict.chain)))) {
        return verdict;
    }
    ChainRules others = rules;
    others.policy.revocation = RevocationCheck::kNone;
    bool isOther = false;
    const ChainVerdict path = JudgeWith(call, certificate, companions, {}, others, isOther);
    if (path.code != kErrChainValid) {
        return verdict;
    }
    if (isOcspUsed) {
        evidence.findings = AskResponders(call, path.chain, companions, rules);
    }
    std::vector<X509*> open;
    for (const X509Ptr& each : path.chain) {
        const OcspFinding* const finding = FindingOf(evidence.findings, each.get());
        if (isStateUnknown && (finding == nullptr || !IsDecided(*finding))) {
            open.push_back(each.get());
        }
    }
    const CrlsPtr lists(
        companions.crls != nullptr
            ? sk_X509_CRL_deep_copy(companions.crls.get(), &SameList, &X509_CRL_free)
            : sk_X509_CRL_new_null());
    if (lists != nullptr) {
        m_lists.Add(call, open, lists.get());
        evidence.lists = lists.get();
    }
    return JudgeWith(call, certificate, companions, evidence, rules, isStateUnknown);
}

OcspFindings CChain::AskResponders(const CProviderCall& call, const std::vector<X509Ptr>& path,
                                   const Companions& companions, const ChainRules& rules) const {
    const CrlsPtr lists(sk_X509_CRL_new_null());
    const TrustPtrShared trust = m_trust.Get(call);
    const auto add = [&](const X509_CRL* list) { sk_X509_CRL_push(lists.get(), SameList(list)); };
    std::ranges::for_each(trust->crls, add, &CrlPtr::get);
    for (int i = 0; i < sk_X509_CRL_num(companions.crls.get()); ++i) {
        add(sk_X509_CRL_value(companions.crls.get(), i));
    }
    return m_responders.Look(call, {.chain = path,
                                    .fromMessage = companions.answers,
                                    .lists = lists.get(),
                                    .time = rules.time.value_or(std::time(nullptr))});
}

ChainVerdict CChain::JudgeWith(const CProviderCall& call, X509* certificate,
                               const Companions& companions, const Evidence& evidence,
                               const ChainRules& rules, bool& isStateUnknown) const {
    const PkiSettings& pki = call.Pki();
    const TrustPtrShared trust = m_trust.Get(call);
    const ChainContextPtr context(
        Require(X509_STORE_CTX_new_ex(m_library.Context(), nullptr), kErrExecution));
    Require(X509_STORE_CTX_init(context.get(), trust->store.get(), certificate,
                                companions.certificates.get()),
            kErrExecution);
    X509_STORE_CTX_set0_crls(context.get(), evidence.lists);
    CallbackData data{.rules = rules, .findings = evidence.findings};
    X509_STORE_CTX_set_app_data(context.get(), &data);
    X509_STORE_CTX_set_verify_cb(context.get(), &PassOver);
    SetRules(X509_STORE_CTX_get0_param(context.get()), pki, rules);

    const bool isHeld = X509_verify_cert(context.get()) == 1;
    int error = X509_STORE_CTX_get_error(context.get());
    int depth = X509_STORE_CTX_get_error_depth(context.get());
    isStateUnknown = data.isStateUnknown;
    ChainVerdict verdict;
    verdict.chain = ChainOf(X509_STORE_CTX_get0_chain(context.get()));
    if (isHeld) {
        const bool isStateNeeded =
            rules.policy.revocation == RevocationCheck::kRequired && !pki.crl.enabled;
        error = RevocationError(verdict.chain, evidence.findings, isStateNeeded, depth);
    }
    const bool isGood = isHeld && error == X509_V_OK;
    // Whatever OpenSSL says of a failure without an error of its own is none of success.
    verdict.code = isGood               ? std::uint32_t{kErrChainValid}
                   : error == X509_V_OK ? std::uint32_t{kChainPartial}
                                        : VerdictCode(error);
    std::wstring why;
    if (!isGood) {
        why = VerdictWords(error);
    } else if (!HasUsages(certificate, rules.policy)) {
        verdict.code = kChainWrongUsage;
        why = Say(Words::kWrongUsage);
    } else if (!HasAllowedAlgorithms(verdict.chain, pki.algorithms)) {
        verdict.code = kChainSignatureInvalid;
        why = Say(Words::kAlgorithmsNotAllowed);
    }
    verdict.text = ::GetErrorMessage(verdict.code, /*prefix=*/false);
    verdict.reasons = ChainReasons(verdict, why, depth,
                                   {.lists = evidence.lists,
                                    .fromMessage = companions.crls.get(),
                                    .fromStores = &trust->crls,
                                    .findings = evidence.findings,
                                    .rules = rules,
                                    .isCrlEnabled = pki.crl.enabled});
    return verdict;
}

std::vector<X509Ptr> CChain::Build(const CProviderCall& call, X509* certificate) const {
    const TrustPtrShared trust = m_trust.Get(call);
    const CertificatesPtr whole(X509_build_chain(certificate, nullptr, trust->store.get(),
                                                 /*with_self_signed=*/1, m_library.Context(),
                                                 nullptr));
    if (whole != nullptr) {
        return ChainOf(whole.get());
    }
    // It ends at no root: only verifying hands out what there is.
    const ChainContextPtr context(
        Require(X509_STORE_CTX_new_ex(m_library.Context(), nullptr), kErrExecution));
    Require(X509_STORE_CTX_init(context.get(), trust->store.get(), certificate, nullptr),
            kErrExecution);
    X509_verify_cert(context.get());  // whatever it says of them
    return ChainOf(X509_STORE_CTX_get0_chain(context.get()));
}

}  // namespace ca
