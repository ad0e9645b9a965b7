#pragma once

#include "records/CertInfo.h"
#include "records/FileData.h"
#include "records/Payload.h"
#include "records/SerializableContainer.h"
#include "records/StringArray.h"
#include "records/VerificationResult.h"
#include "records/fill/SignatureJudge.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace ca {

class CProviderCall;

/// What is to be signed, and how. Views of the request; "" stands for what it leaves open.
struct SignArguments {
    std::optional<std::span<const unsigned char>> content;  ///< file data; none: there were none
    std::span<const unsigned char> message;                 ///< "sendSignData": signed already
    const std::wstring& certId;                             ///< "senderCertId"
    std::wstring digest;                                    ///< "hashAlg", as text
    bool isAttached;                                        ///< the message encloses the content
    bool addSigner;                                         ///< beside those of `message`
    std::optional<std::uint32_t> signerIndex;               ///< the signature that is signed
    const std::wstring& comment;
    const std::wstring& uri;
};

/// A message whose signatures are to be verified. Views of the request.
struct VerifyArguments {
    std::span<const unsigned char> message;                 ///< one object of the payload
    std::optional<std::span<const unsigned char>> content;  ///< what a message apart from it signs
    FileData* extracted;  ///< gets the enclosed content; null: it is not wanted
};

/// A signature without a message around it. Views of the request.
struct RawSignature {
    std::optional<std::span<const unsigned char>> content;
    std::span<const unsigned char> signature;
    const std::wstring& certId;
    std::wstring digest;  ///< "hashAlg", as text
};

/// A certificate that is to be judged.
struct CheckArguments {
    std::optional<std::span<unsigned char>> octets;  ///< file data: the certificate, and what helps
    const std::wstring& certId;                      ///< else this one of the stores
};

/// What a provider does for the module: one operation a function. The module has read the request
/// and its parameters, and fills the answer with what the function gives.
///
/// Each throws ca::Exception with the code of its failure; those that a provider leaves as they are
/// here answer 16303. All may run in any number of threads at once.
class IProvider {
  public:
    IProvider() = default;
    IProvider(const IProvider&) = delete;
    IProvider& operator=(const IProvider&) = delete;
    virtual ~IProvider() = default;

    /// Names of the provider's own stores; those of the client are added by the module.
    virtual void EnumStores(CProviderCall& call, std::vector<std::wstring>& names);
    /// Identifiers of the certificates in the call's stores.
    virtual void EnumCerts(CProviderCall& call, StringArray& ids);
    /// The encoding of a certificate.
    virtual void GetCert(CProviderCall& call, const std::wstring& id, FileData& octets);
    /// Takes over the objects of a payload.
    virtual void SetCert(CProviderCall& call, const std::vector<PayloadItem>& items);
    virtual void SetCert2(CProviderCall& call, const std::vector<PayloadItem>& items);
    /// Describes the certificate that a request names in the place of handing one in.
    virtual std::unique_ptr<CertInfo2> FindCert(CProviderCall& call, const std::wstring& id);
    virtual std::unique_ptr<CertInfo2> GetCertInfo2(CProviderCall& call, const std::wstring& id);
    /// Judges a certificate; puts what it finds into `answer`.
    virtual void CertValidation(CProviderCall& call, const CheckArguments& what,
                                SerializableContainer& answer);

    virtual void Sign(CProviderCall& call, const SignArguments& what, FileData& message);
    virtual void CoSign(CProviderCall& call, const SignArguments& what,
                        SerializableContainer& answer);
    /// The content is a hash.
    virtual void SignHash(CProviderCall& call, const SignArguments& what, FileData& message);
    virtual void SignRaw(CProviderCall& call, const SignArguments& what, FileData& signature);
    virtual void SignHashRaw(CProviderCall& call, const SignArguments& what, FileData& signature);
    virtual void CreateHash(CProviderCall& call, const SignArguments& what, FileData& hash);

    /// Whether verdicts of this provider are real ones; then viewers show them.
    virtual bool Verifies() const noexcept { return false; }
    /// What says of each signature of the message how it stands with it, for as long as the views
    /// of `what` are good; null: none is verified. Where the message is not a signed one, nobody
    /// asks.
    virtual std::unique_ptr<ISignatureJudge> Verify(CProviderCall& call,
                                                    const VerifyArguments& what);
    virtual void VerifyRaw(CProviderCall& call, const RawSignature& what,
                           VerificationResult& result);

    virtual void Encrypt(CProviderCall& call, std::span<const unsigned char> content,
                         FileData& message);

    // Operations that no provider gives a meaning yet.
    virtual void ShowSign(CProviderCall& call);
    virtual void StreamEncode(CProviderCall& call);
    virtual void StreamDecoding(CProviderCall& call);
    virtual void TranslateCRL2(CProviderCall& call);
    virtual void ParseCert(CProviderCall& call);
};

/// The provider that a library is made of; each library defines its own.
std::unique_ptr<IProvider> CreateProvider();

}  // namespace ca
