#include "providers/openssl/ChainReasons.h"

#include "common/DecimalText.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "providers/openssl/ProviderWords.h"
#include "records/text/VisibleText.h"

#include <algorithm>

namespace {

// The newest list of an issuer.
const X509_CRL* FindList(const X509* certificate, const ca::ChainEvidence& evidence,
                         ca::Words& from) {
    const X509_CRL* best = nullptr;
    const auto look = [&](const X509_CRL* list, ca::Words place) {
        const bool isIts =
            X509_NAME_cmp(X509_CRL_get_issuer(list), X509_get_issuer_name(certificate)) == 0;
        if (isIts && (best == nullptr || ASN1_TIME_compare(X509_CRL_get0_lastUpdate(list),
                                                           X509_CRL_get0_lastUpdate(best)) > 0)) {
            best = list;
            from = place;
        }
    };
    for (int i = 0; i < sk_X509_CRL_num(evidence.lists); ++i) {
        look(sk_X509_CRL_value(evidence.lists, i), i < sk_X509_CRL_num(evidence.fromMessage)
                                                       ? ca::Words::kFromMessage
                                                       : ca::Words::kFetched);
    }
    for (const ca::CrlPtr& list : *evidence.fromStores) {
        look(list.get(), ca::Words::kFromStores);
    }
    return best;
}

std::wstring ListText(const X509* certificate, const ca::ChainEvidence& evidence) {
    if (!evidence.isCrlEnabled || evidence.rules.policy.revocation == ca::RevocationCheck::kNone) {
        return ca::Say(ca::Words::kRevocationNotChecked);
    }
    ca::Words from{};
    const X509_CRL* const list = FindList(certificate, evidence, from);
    if (list == nullptr) {
        return ca::Say(ca::Words::kRevocationUnknown);
    }
    return ca::Say(ca::Words::kRevocationList) + ca::TimeText(X509_CRL_get0_lastUpdate(list)) +
           ca::Say(ca::Words::kValidTo) + ca::TimeText(X509_CRL_get0_nextUpdate(list)) +
           ca::Say(from);
}

// An answer that decides says it all; one that does not says why, before what the lists say.
std::wstring RevocationText(const X509* certificate, const ca::ChainEvidence& evidence) {
    const ca::OcspFinding* const finding = ca::FindingOf(evidence.findings, certificate);
    if (finding == nullptr || finding->words.empty()) {
        return ListText(certificate, evidence);
    }
    return ca::IsDecided(*finding) || !evidence.isCrlEnabled
               ? finding->words
               : finding->words + L"; " + ListText(certificate, evidence);
}

}  // namespace

namespace ca {

std::wstring TimeText(const ASN1_TIME* time) {
    const std::optional<std::time_t> seconds = SecondsOf(time);
    return seconds ? TimeText(*seconds) : L"?";
}

std::wstring TimeText(std::time_t time) {
    std::tm parts{};
    char text[32] = "?";
    if (gmtime_r(&time, &parts) != nullptr) {
        std::strftime(text, sizeof text, "%d.%m.%Y %H:%M:%S UTC", &parts);
    }
    return u8u16(text);
}

std::optional<std::time_t> SecondsOf(const ASN1_TIME* time) {
    std::tm parts{};
    if (time == nullptr || ASN1_TIME_to_tm(time, &parts) != 1) {
        return std::nullopt;
    }
    return timegm(&parts);
}

std::wstring NameText(const X509_NAME* name) {
    const BioPtr text(BIO_new(BIO_s_mem()));
    constexpr unsigned long kFlags = (XN_FLAG_RFC2253 & ~ASN1_STRFLGS_ESC_MSB);
    if (text == nullptr || X509_NAME_print_ex(text.get(), name, /*indent=*/0, kFlags) < 0) {
        return L"?";
    }
    char* from = nullptr;
    const long size = BIO_get_mem_data(text.get(), &from);
    return Visible(u8u16(std::string(from, static_cast<std::size_t>(size))));
}

std::wstring ChainReasons(const ChainVerdict& verdict, const std::wstring& why, int depth,
                          const ChainEvidence& evidence) {
    std::wstring text;
    const bool isComplete = verdict.code == kErrChainValid;
    for (std::size_t i = 0; i < verdict.chain.size(); ++i) {
        const X509* const each = verdict.chain[i].get();
        const bool isAnchor = isComplete && i + 1 == verdict.chain.size();
        text += (text.empty() ? L"" : L"\n") + DecimalText(i + 1) + L". " +
                NameText(X509_get_subject_name(each)) + Say(Words::kValidFrom) +
                TimeText(X509_get0_notBefore(each)) + Say(Words::kValidTo) +
                TimeText(X509_get0_notAfter(each)) + L"; ";
        text += isAnchor ? Say(Words::kTrustedRoot) : RevocationText(each, evidence);
        if (!isComplete && !why.empty() && static_cast<int>(i) == depth) {
            text += L"; " + why;
        }
    }
    return text;
}

}  // namespace ca
