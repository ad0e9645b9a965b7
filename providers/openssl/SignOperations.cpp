// Signing and hashing.

#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "common/Log.h"
#include "providers/openssl/Algorithms.h"
#include "providers/openssl/OpenSslProvider.h"
#include "providers/openssl/Password.h"
#include "providers/openssl/Policies.h"
#include "providers/openssl/ProviderWords.h"
#include "providers/openssl/SignedMessage.h"
#include "providers/openssl/TimeStampClient.h"

#include <openssl/rsa.h>

#include <memory>

namespace {

std::span<const unsigned char> ContentOf(const ca::SignArguments& what) {
    if (!what.content) {
        throw ca::Exception(ca::kErrNoArgumentData, SetZORNAMessage(kMsgNoPayload));
    }
    return *what.content;
}

// The octets of a raw signature with a digest that is made here (`digest` null: by the algorithm
// itself) of all the content.
void SignOctets(EVP_PKEY* key, const EVP_MD* digest, bool isPss,
                std::span<const unsigned char> content, ca::FileData& signature) {
    const ca::DigestContextPtr context(ca::Require(EVP_MD_CTX_new(), ca::kErrExecution));
    EVP_PKEY_CTX* parameters = nullptr;
    const char* const name = digest != nullptr ? EVP_MD_get0_name(digest) : nullptr;
    ca::Require(
        EVP_DigestSignInit_ex(context.get(), &parameters, name, nullptr, nullptr, key, nullptr),
        ca::kErrExecution);
    if (isPss) {
        ca::Require(EVP_PKEY_CTX_set_rsa_padding(parameters, RSA_PKCS1_PSS_PADDING),
                    ca::kErrExecution);
    }
    std::size_t size = 0;
    ca::Require(EVP_DigestSign(context.get(), nullptr, &size, content.data(), content.size()),
                ca::kErrExecution);
    signature.AssignZeros(static_cast<std::uint32_t>(size));
    ca::Require(
        EVP_DigestSign(context.get(), signature.data(), &size, content.data(), content.size()),
        ca::kErrExecution);
    ca::FileData exact;  // ECDSA takes less than it asked for
    exact.Assign(signature.data(), static_cast<std::uint32_t>(size));
    signature = std::move(exact);
}

}  // namespace

namespace ca {

// The one certificate with a key in the call's stores, where the request names none.
StoredCertificate COpenSslProvider::ChooseSigner(CProviderCall& call, const std::wstring& id,
                                                 const PasswordSource& password) {
    const PasswordSource known =
        call.IsSilent() && !CPassword::OfParams(call) ? PasswordSource() : password;
    if (!id.empty()) {
        std::optional<StoredCertificate> found = m_stores.Find(call, id, known);
        if (found && !found->keyFile.empty()) {
            return std::move(*found);
        }
        call.NeedCert(id);
        throw Exception(kErrNeedMore, Say(Words::kNoKey) + id);
    }
    StoreAddresses stores = call.Stores();
    if (stores.empty()) {
        stores.emplace_back(kStoreMy, /*machine=*/false);
    }
    std::optional<StoredCertificate> chosen;
    for (const StoreAddress& store : stores) {
        const StoreContentPtr content =
            known ? m_stores.Opened(call, store, known) : m_stores.Content(call, store);
        for (const StoredCertificate& each : content->certificates) {
            if (!each.keyFile.empty() && chosen && chosen->id != each.id) {
                throw Exception(kErrNoArgumentData, Say(Words::kNoSigner));
            }
            if (!each.keyFile.empty()) {
                chosen = each;
            }
        }
    }
    if (!chosen) {
        throw Exception(kErrNoArgumentData, Say(Words::kNoSigner));
    }
    return std::move(*chosen);
}

Signer COpenSslProvider::LoadSigner(CProviderCall& call, const SignArguments& what) {
    CPassword password(call);
    const PasswordSource source = [&]() -> const std::string& { return password.Get(); };
    const StoredCertificate stored = ChooseSigner(call, what.certId, source);
    const PkiSettings& pki = call.Pki();
    const InitString params = call.Params();
    Signer signer;
    signer.certificate = m_library.ReadCertificate(stored.der);
    CheckSigner(call, params, signer.certificate.get());
    signer.key = CStoreDirectory::LoadKey(m_library, stored, source);
    if (!IsKeyAllowed(pki.algorithms, signer.key.get())) {
        throw Exception(kErrParameters, Say(Words::kKeyTooShort));
    }
    signer.digest = ChooseDigest(m_library, pki.algorithms, what.digest, signer.key.get());
    signer.isPss =
        params.GetText(L"RSA_PADDING") == L"PSS" && EVP_PKEY_is_a(signer.key.get(), "RSA") == 1;
    RequireSignature(pki.algorithms, signer.key.get(), signer.digest.get(), signer.isPss);
    // 0: none, 1: the signer's own, 2: its issuers as well, as far as they are known.
    const std::uint64_t include = params.GetUnsigned(L"CERT_INCLUDE", 0, 2, 2);
    if (include == 2) {
        signer.companions = m_chain.Build(call, signer.certificate.get());
    }
    if (include == 1 || (include == 2 && signer.companions.empty())) {
        X509_up_ref(signer.certificate.get());
        signer.companions.emplace_back(signer.certificate.get());
    }
    return signer;
}

// A key signs when verifying would find its certificate fit for that: by the usages that the policy
// names. The whole chain counts where the parameters ask for it, the period unless they say that it
// does not.
void COpenSslProvider::CheckSigner(CProviderCall& call, const InitString& params,
                                   X509* certificate) const {
    const PkiPolicy& policy = call.Pki().policies.signing;
    if (!HasUsages(certificate, policy)) {
        throw Exception(kChainWrongUsage);
    }
    if (params.GetUnsigned(L"CERT_FULL_CHECK", 0, 1, 0) == 1) {
        const ChainVerdict verdict = m_chain.Judge(call, certificate, {}, RulesOf(call, policy));
        if (verdict.code != kErrChainValid) {
            throw Exception(verdict.code, verdict.reasons);
        }
    }
    if (params.GetUnsigned(L"CERT_CHECK_EXPIRED", 0, 1, 1) == 1 &&
        (X509_cmp_current_time(X509_get0_notBefore(certificate)) > 0 ||
         X509_cmp_current_time(X509_get0_notAfter(certificate)) < 0)) {
        throw Exception(kErrCertTimeInvalid);
    }
}

// A time stamp of the signature that was made, where the parameters ask for one.
void COpenSslProvider::Stamp(CProviderCall& call, const Signer& signer, CSignedMessage& message) {
    if (!CTimeStampClient::IsWanted(call)) {
        return;
    }
    const CTimeStampClient client(m_library, m_stores, m_chain);
    message.AddTimeStamp(client.Ask(call, message.LatestSignature(), signer.digest.get()));
}

void COpenSslProvider::Sign(CProviderCall& call, const SignArguments& what, FileData& message) {
    const CErrorScope scope;
    if (what.addSigner) {
        AddSignature(call, what).Write(message);
        return;
    }
    const std::span<const unsigned char> content = ContentOf(what);
    const Signer signer = LoadSigner(call, what);
    CSignedMessage made(m_library);
    made.SignContent(signer, content, what.isAttached);
    Stamp(call, signer, made);
    made.Write(message);
}

void COpenSslProvider::SignHash(CProviderCall& call, const SignArguments& what, FileData& message) {
    const CErrorScope scope;
    const std::span<const unsigned char> digest = ContentOf(what);
    if (what.addSigner && what.message.empty()) {
        throw Exception(kErrNoArgumentData, SetZORNAMessage(kMsgNoPayload));
    }
    CSignedMessage made =
        what.addSigner ? CSignedMessage(m_library, what.message) : CSignedMessage(m_library);
    const Signer signer = LoadSigner(call, what);
    made.AddDigest(signer, digest);
    Stamp(call, signer, made);
    made.Write(message);
}

// The message stands in "sendSignData", its content apart from it in the file data; or it is the
// file data itself.
CSignedMessage COpenSslProvider::AddSignature(CProviderCall& call, const SignArguments& what) {
    const bool isApart = !what.message.empty();
    CSignedMessage made(m_library, isApart ? what.message : ContentOf(what));
    const Signer signer = LoadSigner(call, what);
    if (what.signerIndex && CTimeStampClient::IsWanted(call)) {
        throw Exception(kErrModeNotSupported);  // stamps are of signatures on contents
    }
    if (what.signerIndex) {
        made.Countersign(m_library, signer, *what.signerIndex);
    } else {
        made.AddSignature(signer, isApart ? what.content : std::nullopt);
        Stamp(call, signer, made);
    }
    return made;
}

void COpenSslProvider::CoSign(CProviderCall& call, const SignArguments& what,
                              SerializableContainer& answer) {
    const CErrorScope scope;
    auto message = std::make_unique<FileData>();
    AddSignature(call, what).Write(*message);
    answer.SetObject(message.release(), /*clear=*/true);  // the container owns it now
    LogEvent(SetZORNAMessage(kMsgSignatureWritten), /*isError=*/false);
}

void COpenSslProvider::SignRaw(CProviderCall& call, const SignArguments& what,
                               FileData& signature) {
    const CErrorScope scope;
    const std::span<const unsigned char> content = ContentOf(what);
    const Signer signer = LoadSigner(call, what);
    const bool isWhole = SignsWholeMessage(signer.key.get());
    SignOctets(signer.key.get(), isWhole ? nullptr : signer.digest.get(), signer.isPss, content,
               signature);
}

void COpenSslProvider::SignHashRaw(CProviderCall& call, const SignArguments& what,
                                   FileData& signature) {
    const CErrorScope scope;
    const std::span<const unsigned char> digest = ContentOf(what);
    const Signer signer = LoadSigner(call, what);
    if (SignsWholeMessage(signer.key.get())) {
        throw Exception(kErrModeNotSupported);
    }
    if (digest.size() != static_cast<std::size_t>(EVP_MD_get_size(signer.digest.get()))) {
        throw Exception(kErrParameters);
    }
    const KeyContextPtr context(Require(
        EVP_PKEY_CTX_new_from_pkey(m_library.Context(), signer.key.get(), nullptr), kErrExecution));
    Require(EVP_PKEY_sign_init(context.get()), kErrExecution);
    Require(EVP_PKEY_CTX_set_signature_md(context.get(), signer.digest.get()), kErrExecution);
    if (signer.isPss) {
        Require(EVP_PKEY_CTX_set_rsa_padding(context.get(), RSA_PKCS1_PSS_PADDING), kErrExecution);
    }
    std::size_t size = 0;
    Require(EVP_PKEY_sign(context.get(), nullptr, &size, digest.data(), digest.size()),
            kErrExecution);
    std::vector<unsigned char> made(size);
    Require(EVP_PKEY_sign(context.get(), made.data(), &size, digest.data(), digest.size()),
            kErrExecution);
    signature.Assign(made.data(), static_cast<std::uint32_t>(size));
}

void COpenSslProvider::CreateHash(CProviderCall& call, const SignArguments& what, FileData& hash) {
    const CErrorScope scope;
    const DigestPtr digest =
        ChooseDigest(m_library, call.Pki().algorithms, what.digest, /*key=*/nullptr);
    const std::vector<unsigned char> value = DigestOf(digest.get(), ContentOf(what));
    hash.Assign(value.data(), static_cast<std::uint32_t>(value.size()));
}

}  // namespace ca
