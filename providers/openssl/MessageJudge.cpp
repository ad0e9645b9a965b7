#include "providers/openssl/MessageJudge.h"

#include "asn1/Elements.h"
#include "asn1/views/MessageViews.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "providers/openssl/Algorithms.h"
#include "providers/openssl/ChainReasons.h"
#include "providers/openssl/ChainRecord.h"
#include "providers/openssl/Countersignature.h"
#include "providers/openssl/MessageEvidence.h"
#include "providers/openssl/SignatureRecord.h"
#include "providers/openssl/SignedAttributes.h"
#include "providers/openssl/SignerChecks.h"
#include "providers/openssl/TimeStamp.h"
#include "records/fill/SignInfoFill.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr int kReadAtOnce = 65536;
constexpr std::size_t kMaxDigests = 16;           // digest algorithms of a message
constexpr std::size_t kMaxComparisons = 1000000;  // signers times certificates
// What reading a certificate of a store costs, in comparisons.
constexpr std::size_t kCostOfReading = 20;
// Octets that a signature may have that is signed itself; none of the algorithms makes longer ones.
constexpr std::size_t kMaxSignedValue = 16384;
// Octets of issuers that are described beside the signers of a small message.
constexpr std::size_t kIssuersAlways = 32768;
constexpr int kMaxStamps = 64;   // time stamps of a message
constexpr int kMaxSearches = 8;  // for their signers through all stores, in vain

// Null for one that OpenSSL cannot read: the stores hold others.
ca::X509Ptr ReadStored(const ca::COpenSslLibrary& library, const ca::StoredCertificate& stored) {
    try {
        return library.ReadCertificate(stored.der);
    } catch (const ca::Exception&) {
        return nullptr;
    }
}

}  // namespace

namespace ca {

CMessageJudge::CMessageJudge(const COpenSslLibrary& library, CStores& stores, const CChain& chain,
                             const CProviderCall& call, const VerifyArguments& what)
    : m_library(library),
      m_stores(stores),
      m_chain(chain),
      m_call(call),
      m_rules(RulesOf(call, call.Pki().policies.signing)),
      m_stampsLeft(kMaxStamps),
      m_searchesLeft(kMaxSearches) {
    const CErrorScope scope;
    m_isRead = Read(what.message);
    if (!m_isRead || !Digest(what)) {
        return;
    }
    FindSigners();
    if (what.extracted != nullptr) {
        GiveContent(*what.extracted);
    }
}

// A stamp on a stamp would prove nothing about the signature: none is looked at.
CMessageJudge::CMessageJudge(const COpenSslLibrary& library, CStores& stores, const CChain& chain,
                             const CProviderCall& call, std::span<const unsigned char> token,
                             const Companions& others, const ChainRules& rules)
    : m_library(library),
      m_stores(stores),
      m_chain(chain),
      m_call(call),
      m_rules(rules),
      m_stampsLeft(0),
      m_searchesLeft(0) {
    const CErrorScope scope;
    m_isRead = Read(token);
    if (m_isRead && Digest({.message = token, .content = std::nullopt, .extracted = nullptr})) {
        AddCompanions(others, m_companions);
        CMS_set1_signers_certs(m_message.get(), others.certificates.get(), 0);
        FindSigners();
    }
}

bool CMessageJudge::Read(std::span<const unsigned char> message) {
    // Each algorithm is a pass over the content, and each signer looks through the certificates.
    const CAsn1SignedDataView signedData(FirstElement(FindSignedData(message)));
    if (CountElements(CAsn1Cursor(signedData.DigestAlgorithms().content)) > kMaxDigests) {
        m_fault = Say(Words::kMessageTooMuch);
        return false;
    }
    m_library.PrepareFor(signedData.Certificates().raw);
    const bool isPrepared = m_library.PrepareFor(signedData.SignerInfos().raw);
    m_unreadable = isPrepared ? Words::kMessageNotRead : Words::kGostMissing;
    CMS_ContentInfo* fresh =
        Require(CMS_ContentInfo_new_ex(m_library.Context(), nullptr), kErrExecution);
    const unsigned char* at = message.data();
    m_message.reset(d2i_CMS_ContentInfo(&fresh, &at, static_cast<long>(message.size())));
    const bool isSigned =
        m_message != nullptr && OBJ_obj2nid(CMS_get0_type(m_message.get())) == NID_pkcs7_signed;
    if (!isSigned) {
        m_fault = Say(Words::kMessageNotRead);
        return false;
    }
    m_comparisons = kMaxComparisons;
    m_room = message.size() / 2 + kIssuersAlways;
    m_companions.certificates.reset(CMS_get1_certs(m_message.get()));
    m_companions.crls.reset(CMS_get1_crls(m_message.get()));
    const auto signers =
        static_cast<std::size_t>(sk_CMS_SignerInfo_num(CMS_get0_SignerInfos(m_message.get())));
    const auto certificates =
        static_cast<std::size_t>(std::max(sk_X509_num(m_companions.certificates.get()), 1));
    if (signers > kMaxComparisons / certificates) {
        m_fault = Say(Words::kMessageTooMuch);
        return false;
    }
    CollectEvidence(m_library, m_message.get(), message, m_companions);
    return true;
}

// Reads the content through its digests, without a copy.
bool CMessageJudge::Digest(const VerifyArguments& what) {
    ASN1_OCTET_STRING** const held = CMS_get0_content(m_message.get());
    if (held != nullptr && *held != nullptr) {
        m_octets = {ASN1_STRING_get0_data(*held),
                    static_cast<std::size_t>(ASN1_STRING_length(*held))};
    } else if (what.content) {
        m_octets = *what.content;
    } else {
        m_fault = Say(Words::kContentMissing);
        return false;
    }
    m_content = ReadingBio(m_octets);
    BIO* const chain = CMS_dataInit(m_message.get(), m_content.get());
    if (chain == nullptr) {
        m_fault = Say(m_unreadable);
        return false;
    }
    std::vector<char> passed(kReadAtOnce);
    while (BIO_read(chain, passed.data(), kReadAtOnce) > 0) {
    }
    m_digests.reset(chain);
    static_cast<void>(m_content.release());  // its end now belongs to the chain
    return true;
}

void CMessageJudge::GiveContent(FileData& extracted) const {
    ASN1_OCTET_STRING** const held = CMS_get0_content(m_message.get());
    if (held != nullptr && *held != nullptr) {
        extracted.Assign(ASN1_STRING_get0_data(*held),
                         static_cast<std::uint32_t>(ASN1_STRING_length(*held)));
    }
}

// Among the certificates of the message, then among those of the stores.
void CMessageJudge::FindSigners() {
    CMS_set1_signers_certs(m_message.get(), nullptr, 0);
    STACK_OF(CMS_SignerInfo)* const signers = CMS_get0_SignerInfos(m_message.get());
    std::vector<CMS_SignerInfo*> unknown;
    for (int i = 0; i < sk_CMS_SignerInfo_num(signers); ++i) {
        X509* certificate = nullptr;
        CMS_SignerInfo* const each = sk_CMS_SignerInfo_value(signers, i);
        CMS_SignerInfo_get0_algs(each, nullptr, &certificate, nullptr, nullptr);
        if (certificate == nullptr) {
            unknown.push_back(each);
        }
    }
    if (unknown.empty()) {
        return;
    }
    for (const StoreContentPtr& content : m_stores.OfSigners(m_call)) {
        for (const StoredCertificate& stored : content->certificates) {
            const X509Ptr certificate = ReadStored(m_library, stored);
            if (certificate == nullptr) {
                continue;
            }
            std::erase_if(unknown, [&](CMS_SignerInfo* each) {
                const bool isIts = CMS_SignerInfo_cert_cmp(each, certificate.get()) == 0;
                if (isIts) {
                    CMS_SignerInfo_set1_signer_cert(each, certificate.get());
                }
                return isIts;
            });
            if (unknown.empty()) {
                return;
            }
        }
    }
}

void CMessageJudge::Judge(std::size_t signer, SignInfo& record) {
    const CErrorScope scope;
    STACK_OF(CMS_SignerInfo)* const signers =
        m_digests != nullptr ? CMS_get0_SignerInfos(m_message.get()) : nullptr;
    if (!m_fault.empty()) {
        SayNotVerified(m_fault, record);
        return;
    }
    if (signers == nullptr || signer >= static_cast<std::size_t>(sk_CMS_SignerInfo_num(signers))) {
        return;
    }
    const Finding finding = Assess(sk_CMS_SignerInfo_value(signers, static_cast<int>(signer)));
    if (finding.verdict == nullptr) {
        SayNotVerified(finding.value.why, record);
        return;
    }
    FillVerdicts(finding, record);
}

void CMessageJudge::FillVerdicts(const Finding& finding, SignInfo& record) {
    const ValueVerdict& value = finding.value;
    const std::wstring text = SignatureText(value.code);
    FillSignature(value.code, value.why.empty() ? text : text + L": " + value.why, record);
    ShowCertificate(finding.certificate, record);
    FillChain(finding, record);
}

const ChainVerdict& CMessageJudge::VerdictOf(X509* certificate, std::optional<std::time_t> time) {
    const auto question = std::make_pair(static_cast<const X509*>(certificate), time);
    auto known = m_verdicts.find(question);
    if (known == m_verdicts.end()) {
        ChainRules rules = m_rules;
        rules.time = time;
        known =
            m_verdicts.emplace(question, m_chain.Judge(m_call, certificate, m_companions, rules))
                .first;
    }
    return known->second;
}

CMessageJudge::Finding CMessageJudge::Assess(CMS_SignerInfo* signer) {
    EVP_PKEY* key = nullptr;
    X509* certificate = nullptr;
    CMS_SignerInfo_get0_algs(signer, &key, &certificate, nullptr, nullptr);
    if (certificate != nullptr && key == nullptr) {
        return {.value = {kErrNotVerified, WhyNoKey(certificate)}};
    }
    if (certificate == nullptr) {
        return {.value = {kErrNotVerified, Say(Words::kSignerUnknown)}};
    }
    Finding finding{.certificate = certificate};
    const std::optional<std::time_t> time = ChooseTime(signer, finding.timeLine);
    finding.verdict = &VerdictOf(certificate, time);
    finding.value = CheckValue(signer, certificate, key, finding.verdict->chain);
    return finding;
}

CMS_SignerInfo* CMessageJudge::OnlySigner() const {
    STACK_OF(CMS_SignerInfo)* const signers =
        m_digests != nullptr ? CMS_get0_SignerInfos(m_message.get()) : nullptr;
    return sk_CMS_SignerInfo_num(signers) == 1 ? sk_CMS_SignerInfo_value(signers, 0) : nullptr;
}

// The time for which a signature without a stamp is judged.
std::wstring CMessageJudge::BaseTimeLine() const {
    return Say(Words::kJudgedAt) + TimeText(m_rules.time.value_or(std::time(nullptr))) +
           Say(m_rules.time ? Words::kJudgedAsAsked : Words::kJudgedNow);
}

// A time stamp proves that the signature was there; nothing else does but that it is there now. The
// earliest one that holds counts.
std::optional<std::time_t> CMessageJudge::ChooseTime(CMS_SignerInfo* signer, std::wstring& line) {
    const std::time_t base = m_rules.time.value_or(std::time(nullptr));
    std::wstring fault;
    std::optional<std::time_t> best;
    for (const std::span<const unsigned char> token : TimeStampsOf(signer, m_stampsLeft)) {
        if (m_searchesLeft == 0) {
            fault = Say(Words::kStampNotCounted) + std::wstring(Say(Words::kMessageTooMuch));
            break;
        }
        CMessageJudge judge(m_library, m_stores, m_chain, m_call, token, m_companions,
                            StampRules(m_call.Pki().policies.timeStamping, m_rules.time));
        const StampFinding stamp =
            JudgeTimeStamp(m_library, m_call.Pki().algorithms, judge,
                           OctetsOf(CMS_SignerInfo_get0_signature(signer)), base);
        m_searchesLeft -= stamp.words == Say(Words::kSignerUnknown) ? 1 : 0;
        if (!stamp.time || !stamp.isTrusted) {
            fault = Say(Words::kStampNotCounted) + stamp.words;
        } else if (!best || *stamp.time < *best) {
            best = stamp.time;
            line =
                Say(Words::kJudgedAt) + TimeText(*best) + Say(Words::kJudgedByStamp) + stamp.words;
        }
    }
    if (best) {
        return best;
    }
    line = BaseTimeLine() + fault;
    return m_rules.time;
}

// Among the certificates of the message, then among those of the stores; null for none, and once
// too much was looked at.
X509* CMessageJudge::FindSigner(CMS_SignerInfo* signer) {
    const auto isIts = [&](X509* certificate) {
        return CMS_SignerInfo_cert_cmp(signer, certificate) == 0;
    };
    const auto mayLook = [this](std::size_t cost) {
        const bool may = cost <= m_comparisons;
        m_comparisons -= may ? cost : 0;
        return may;
    };
    for (int i = 0; i < sk_X509_num(m_companions.certificates.get()) && mayLook(1); ++i) {
        X509* const each = sk_X509_value(m_companions.certificates.get(), i);
        if (isIts(each)) {
            return each;
        }
    }
    const auto found = std::ranges::find_if(m_found, isIts, &X509Ptr::get);
    if (found != m_found.end()) {
        return found->get();
    }
    for (const StoreContentPtr& content : m_stores.OfSigners(m_call)) {
        for (const StoredCertificate& stored : content->certificates) {
            X509Ptr certificate = mayLook(kCostOfReading) ? ReadStored(m_library, stored) : nullptr;
            if (certificate != nullptr && isIts(certificate.get())) {
                return m_found.emplace_back(std::move(certificate)).get();
            }
        }
    }
    return nullptr;
}

void CMessageJudge::JudgeCountersignature(std::span<const unsigned char> value,
                                          std::span<const unsigned char> signer, SignInfo& record) {
    const CErrorScope scope;
    if (!m_isRead) {
        SayNotVerified(m_fault, record);
        return;
    }
    X509* certificate = nullptr;
    const ValueVerdict verdict = CheckCountersignature(value, signer, certificate);
    if (certificate == nullptr) {
        SayNotVerified(verdict.why, record);
        return;
    }
    FillVerdicts({.value = verdict,
                  .certificate = certificate,
                  .verdict = &VerdictOf(certificate, m_rules.time),
                  .timeLine = BaseTimeLine()},
                 record);
}

CMessageJudge::ValueVerdict CMessageJudge::CheckCountersignature(
    std::span<const unsigned char> value, std::span<const unsigned char> signer,
    X509*& certificate) {
    try {
        if (value.size() > kMaxSignedValue) {
            return {kErrNotVerified, Say(Words::kMessageTooMuch)};
        }
        const CCountersignature read(m_library, signer);
        certificate = FindSigner(read.Signer());
        if (certificate == nullptr) {
            return {kErrNotVerified, Say(Words::kSignerUnknown)};
        }
        EVP_PKEY* const key = X509_get0_pubkey(certificate);
        if (key == nullptr) {
            const wchar_t* const why = WhyNoKey(std::exchange(certificate, nullptr));
            return {kErrNotVerified, why};
        }
        if (const std::wstring fault = AlgorithmFault(read.Signer(), key); !fault.empty()) {
            return {kErrSignatureInvalid, fault};
        }
        if (!read.HasDigestOf(value)) {
            return {kErrSignatureInvalid, Say(Words::kOtherContent)};
        }
        return read.IsSignedBy(key, value) ? CheckMeant(read.Signer(), certificate,
                                                        VerdictOf(certificate, m_rules.time).chain)
                                           : ValueVerdict{kErrSignatureInvalid, {}};
    } catch (const Exception&) {
        certificate = nullptr;
        return {kErrNotVerified, Say(Words::kMessageNotRead)};
    }
}

// What the configuration does not allow; "" where it does.
std::wstring CMessageJudge::AlgorithmFault(const CMS_SignerInfo* signer,
                                           const EVP_PKEY* key) const {
    X509_ALGOR* digest = nullptr;
    X509_ALGOR* signature = nullptr;
    CMS_SignerInfo_get0_algs(const_cast<CMS_SignerInfo*>(signer), nullptr, nullptr, &digest,
                             &signature);
    if (!FitsKey(signature, key)) {
        return Say(Words::kOtherAlgorithm);
    }
    const PkiAlgorithms& allowed = m_call.Pki().algorithms;
    if (const std::wstring oid = Dotted(digest->algorithm); !IsDigestAllowed(allowed, oid)) {
        return Say(Words::kAlgorithmNotAllowed) + oid;
    }
    if (const std::wstring oid = SignatureOid(digest, signature, key);
        !IsSignatureAllowed(allowed, oid)) {
        return Say(Words::kAlgorithmNotAllowed) + oid;
    }
    return {};
}

CMessageJudge::ValueVerdict CMessageJudge::CheckMeant(const CMS_SignerInfo* signer,
                                                      X509* certificate,
                                                      const std::vector<X509Ptr>& chain) const {
    return IsCertificateMeant(signer, certificate, m_companions.certificates.get(), chain)
               ? ValueVerdict{kErrChainValid, {}}
               : ValueVerdict{kErrSignatureInvalid, Say(Words::kOtherCertificate)};
}

CMessageJudge::ValueVerdict CMessageJudge::CheckValue(CMS_SignerInfo* signer, X509* certificate,
                                                      EVP_PKEY* key,
                                                      const std::vector<X509Ptr>& chain) {
    if (const std::wstring fault = AlgorithmFault(signer, key); !fault.empty()) {
        return {kErrSignatureInvalid, fault};
    }
    const bool hasAttributes = CMS_signed_get_attr_count(signer) > 0;
    const ASN1_OBJECT* const type = CMS_get0_eContentType(m_message.get());
    if (hasAttributes ? !IsTypeRight(signer, type) : OBJ_obj2nid(type) != NID_pkcs7_data) {
        return {kErrSignatureInvalid, Say(Words::kAttributesWrong)};
    }
    const bool isWhole = SignsWholeMessage(key);
    const bool isValueGood =
        isWhole ? VerifyWhole(signer, key, hasAttributes ? EncodedAttributes(signer) : m_octets)
                : !hasAttributes || CMS_SignerInfo_verify(signer) == 1;
    if (!isValueGood) {
        return {kErrSignatureInvalid, {}};
    }
    // Without attributes the value itself is over the content, and verified here.
    const bool isContentSeen = isWhole && !hasAttributes;
    if (!isContentSeen && CMS_SignerInfo_verify_content(signer, m_digests.get()) != 1) {
        return {kErrSignatureInvalid, Say(Words::kOtherContent)};
    }
    return CheckMeant(signer, certificate, chain);
}

// The issuers are told with the first signature of a certificate.
void CMessageJudge::FillChain(const Finding& finding, SignInfo& record) {
    const ChainVerdict& verdict = *finding.verdict;
    if (m_described.insert(finding.certificate).second) {
        FillIssuers(verdict.chain, m_room, record.signCert);
    }
    record.verifyResultEx.certificateVerifyResult = verdict.code;
    record.verifyResultEx.certificateVerifyResultString =
        verdict.text + L'\n' + finding.timeLine + L'\n' + verdict.reasons;
    record.signCert.validityNumber = verdict.code;
    record.signCert.validity = verdict.text;
    if (record.verifyResultEx.signatureVerifyResult == kErrChainValid &&
        verdict.code != kErrChainValid) {
        record.verifyResult = verdict.text;  // the one line that hosts show
    }
}

}  // namespace ca
