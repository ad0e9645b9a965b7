// Verifying signatures and certificates.

#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "common/Log.h"
#include "module/ops/RefusedObjects.h"
#include "providers/openssl/Algorithms.h"
#include "providers/openssl/ChainRecord.h"
#include "providers/openssl/MessageEvidence.h"
#include "providers/openssl/MessageJudge.h"
#include "providers/openssl/OpenSslProvider.h"
#include "providers/openssl/Policies.h"
#include "providers/openssl/ProviderWords.h"
#include "providers/openssl/SignatureRecord.h"
#include "records/AnswerBudget.h"
#include "records/fill/CertInfoFill.h"
#include "records/fill/CertificateBundle.h"
#include "records/fill/CrlInfoFill.h"
#include "records/fill/ValidityText.h"

#include <openssl/rsa.h>

#include <algorithm>
#include <limits>
#include <memory>

namespace {

// What a payload brings: the certificate that is meant, which is the first, and what helps.
struct Payload {
    std::vector<std::vector<unsigned char>> certificates;
    ca::Companions companions;
};

Payload ReadPayload(const ca::COpenSslLibrary& library, std::span<unsigned char> octets) {
    const std::vector<ca::PayloadItem> items = ca::DecodePayload(octets);
    Payload payload{{},
                    {ca::CertificatesPtr(sk_X509_new_null()), ca::CrlsPtr(sk_X509_CRL_new_null())}};
    for (const ca::PayloadItem& item : items) {
        ca::CertificateBundle bundle;
        ca::CollectCertificates(item.octets, bundle);
        for (const auto& der : bundle.certificates) {
            ca::X509Ptr certificate = library.ReadCertificate(der);
            sk_X509_push(payload.companions.certificates.get(), certificate.release());
            payload.certificates.emplace_back(der.begin(), der.end());
        }
        const std::span<const unsigned char> list = bundle.certificates.empty()
                                                        ? ca::FindCrl(item.octets)
                                                        : std::span<const unsigned char>();
        if (ca::CrlPtr crl = list.empty() ? nullptr : library.ReadCrl(list)) {
            sk_X509_CRL_push(payload.companions.crls.get(), crl.release());
        } else if (bundle.certificates.empty()) {
            ca::AddOcspAnswer(item.octets, payload.companions);
        }
    }
    if (payload.certificates.empty()) {
        throw ca::Exception(ca::kErrCertificate, ca::SayRefused(items, &ca::CertificateFault));
    }
    return payload;
}

// The record of a certificate with its issuers nested, in the order of the chain.
std::unique_ptr<ca::CertInfo2> Describe(const ca::ChainVerdict& verdict) {
    auto info = std::make_unique<ca::CertInfo2>();
    if (!verdict.chain.empty()) {
        ca::FillCertInfo(ca::EncodingOf(verdict.chain.front().get()), *info);
        std::size_t room = std::numeric_limits<std::size_t>::max();  // the answer's alone
        ca::FillIssuers(verdict.chain, room, *info);
    }
    info->validityNumber = verdict.code;
    info->validity = verdict.text;
    return info;
}

}  // namespace

namespace ca {

std::unique_ptr<ISignatureJudge> COpenSslProvider::Verify(CProviderCall& call,
                                                          const VerifyArguments& what) {
    return std::make_unique<CMessageJudge>(m_library, m_stores, m_chain, call, what);
}

void COpenSslProvider::VerifyRaw(CProviderCall& call, const RawSignature& what,
                                 VerificationResult& result) {
    const CErrorScope scope;
    if (!what.content || what.signature.empty()) {
        throw Exception(kErrNoArgumentData, SetZORNAMessage(kMsgNoPayload));
    }
    const StoredCertificate stored = m_stores.Require(call, what.certId);
    const X509Ptr certificate = m_library.ReadCertificate(stored.der);
    EVP_PKEY* const key = Require(X509_get0_pubkey(certificate.get()), kErrCertificate);
    const DigestPtr digest = ChooseDigest(m_library, call.Pki().algorithms, what.digest, key);
    const DigestContextPtr context(Require(EVP_MD_CTX_new(), kErrExecution));
    EVP_PKEY_CTX* parameters = nullptr;
    const char* const name = SignsWholeMessage(key) ? nullptr : EVP_MD_get0_name(digest.get());
    Require(EVP_DigestVerifyInit_ex(context.get(), &parameters, name, m_library.Context(), nullptr,
                                    key, nullptr),
            kErrExecution);
    const bool isPss =
        call.Params().GetText(L"RSA_PADDING") == L"PSS" && EVP_PKEY_is_a(key, "RSA") == 1;
    RequireSignature(call.Pki().algorithms, key, digest.get(), isPss);
    if (isPss) {
        Require(EVP_PKEY_CTX_set_rsa_padding(parameters, RSA_PKCS1_PSS_PADDING), kErrExecution);
    }
    const bool isGood =
        EVP_DigestVerify(context.get(), what.signature.data(), what.signature.size(),
                         what.content->data(), what.content->size()) == 1;
    const ChainVerdict verdict =
        m_chain.Judge(call, certificate.get(), {}, RulesOf(call, call.Pki().policies.signing));
    result.signatureVerifyResult = isGood ? kErrChainValid : kErrSignatureInvalid;
    result.signatureVerifyResultString = SignatureText(result.signatureVerifyResult);
    result.certificateVerifyResult = verdict.code;
    result.certificateVerifyResultString = verdict.text + L'\n' + verdict.reasons;
}

void COpenSslProvider::CertValidation(CProviderCall& call, const CheckArguments& what,
                                      SerializableContainer& answer) {
    const CErrorScope scope;
    Payload payload = what.octets ? ReadPayload(m_library, *what.octets)
                                  : Payload{{m_stores.Require(call, what.certId).der}, {}};
    const CAnswerBudget budget(what.octets ? what.octets->size() : 0);
    const X509Ptr certificate = m_library.ReadCertificate(payload.certificates.front());
    const ChainVerdict verdict =
        m_chain.Judge(call, certificate.get(), payload.companions, RulesOf(call, PolicyOf(call)));
    std::unique_ptr<CertInfo2> info = Describe(verdict);
    auto result = std::make_unique<VerificationResult>();
    FillNotVerified(*result);  // there is no signature but the certificates' own
    result->certificateVerifyResult = verdict.code;
    result->certificateVerifyResultString = verdict.text + L'\n' + verdict.reasons;
    answer.SetObject(info.release(), /*clear=*/true);  // the container owns them now
    answer.SetObject(result.release(), /*clear=*/false);
}

}  // namespace ca
