#include "providers/openssl/TimeStamp.h"

#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "providers/openssl/Algorithms.h"
#include "providers/openssl/ChainReasons.h"
#include "providers/openssl/MessageEvidence.h"
#include "providers/openssl/Policies.h"
#include "providers/openssl/ProviderWords.h"
#include "providers/openssl/SignedMessage.h"

#include <openssl/x509v3.h>

#include <algorithm>

namespace {

constexpr std::time_t kClockSkew = 300;  // seconds that two machines' clocks may differ

ca::StampFinding Fault(std::wstring words) {
    return {.time = std::nullopt, .isTrusted = false, .words = std::move(words)};
}

// messageImprint: the digest of what was stamped, with an algorithm that is accepted.
bool IsOver(const ca::COpenSslLibrary& library, const ca::PkiAlgorithms& allowed, TS_TST_INFO* info,
            std::span<const unsigned char> stamped) {
    TS_MSG_IMPRINT* const imprint = TS_TST_INFO_get_msg_imprint(info);
    const std::wstring oid = ca::Dotted(TS_MSG_IMPRINT_get_algo(imprint)->algorithm);
    if (!ca::IsDigestAllowed(allowed, oid)) {
        return false;
    }
    try {
        const ca::DigestPtr digest = library.FindDigest(ca::u16u8(oid));
        return std::ranges::equal(ca::DigestOf(digest.get(), stamped),
                                  ca::OctetsOf(TS_MSG_IMPRINT_get_msg(imprint)));
    } catch (const ca::Exception&) {
        return false;  // a digest that nobody has
    }
}

// The one purpose, and critical (RFC 3161, 2.3); which certificate it is must be signed with the
// token (2.4.2).
bool MayStamp(const CMS_SignerInfo* signer, X509* certificate) {
    const bool isNamed =
        CMS_signed_get_attr_by_NID(signer, NID_id_smime_aa_signingCertificate, -1) >= 0 ||
        CMS_signed_get_attr_by_NID(signer, NID_id_smime_aa_signingCertificateV2, -1) >= 0;
    return isNamed && X509_check_purpose(certificate, X509_PURPOSE_TIMESTAMP_SIGN, /*ca=*/0) == 1;
}

}  // namespace

namespace ca {

std::vector<std::span<const unsigned char>> TimeStampsOf(const CMS_SignerInfo* signer, int& left) {
    std::vector<std::span<const unsigned char>> tokens;
    int index = -1;
    while (left > 0 && (index = CMS_unsigned_get_attr_by_NID(signer, NID_id_smime_aa_timeStampToken,
                                                             index)) >= 0) {
        X509_ATTRIBUTE* const attribute = CMS_unsigned_get_attr(signer, index);
        for (int i = 0; left > 0 && i < X509_ATTRIBUTE_count(attribute); ++i) {
            const ASN1_TYPE* const value = X509_ATTRIBUTE_get0_type(attribute, i);
            if (value != nullptr && value->type == V_ASN1_SEQUENCE) {
                tokens.push_back(OctetsOf(value->value.sequence));
                --left;
            }
        }
    }
    return tokens;
}

// What a request says of certificate policies is meant for signers.
ChainRules StampRules(const PkiPolicy& policy, std::optional<std::time_t> time) {
    return {.policy = policy,
            .time = time,
            .policies = PolicySetOf(InitString(), policy),
            .isPolicyExplicit = !policy.certificatePolicies.empty(),
            .isMappingInhibited = false,
            .isAnyInhibited = false};
}

StampInfoPtr StampInfoOf(const CMessageJudge& token) {
    const bool isToken =
        token.OnlySigner() != nullptr &&
        OBJ_obj2nid(CMS_get0_eContentType(const_cast<CMS_ContentInfo*>(token.Message()))) ==
            NID_id_smime_ct_TSTInfo;
    const std::span<const unsigned char> content = token.Content();
    const unsigned char* at = content.data();
    return StampInfoPtr(isToken ? d2i_TS_TST_INFO(nullptr, &at, static_cast<long>(content.size()))
                                : nullptr);
}

StampFinding JudgeTimeStamp(const COpenSslLibrary& library, const PkiAlgorithms& allowed,
                            CMessageJudge& token, std::span<const unsigned char> stamped,
                            std::time_t now) {
    const CErrorScope scope;
    const StampInfoPtr info = StampInfoOf(token);
    if (info == nullptr) {
        return Fault(Say(Words::kStampNotRead));
    }
    if (!IsOver(library, allowed, info.get(), stamped)) {
        return Fault(Say(Words::kStampOther));
    }
    const CMessageJudge::Finding signer = token.Assess(token.OnlySigner());
    if (const auto& [code, why] = signer.value; code != kErrChainValid) {
        return Fault(why.empty() ? std::wstring(Say(Words::kStampSignature)) : why);
    }
    if (!MayStamp(token.OnlySigner(), signer.certificate)) {
        return Fault(Say(Words::kStampNoRight));
    }
    const auto time = SecondsOf(TS_TST_INFO_get_time(info.get()));
    if (!time || *time > now + kClockSkew) {
        return Fault(Say(Words::kStampFuture));
    }
    const bool isTrusted = signer.verdict->code == kErrChainValid;
    return {.time = std::min(*time, now),
            .isTrusted = isTrusted,
            .words = isTrusted ? NameText(X509_get_subject_name(signer.certificate))
                               : signer.verdict->text};
}

}  // namespace ca
