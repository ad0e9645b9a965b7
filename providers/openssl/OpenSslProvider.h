#pragma once

#include "module/Provider.h"
#include "providers/openssl/Chain.h"
#include "providers/openssl/OpenSslLibrary.h"
#include "providers/openssl/SignedMessage.h"
#include "providers/openssl/Stores.h"
#include "providers/openssl/Trust.h"

namespace ca {

/// A provider whose results are real: OpenSSL does its cryptography, and its stores are directories.
class COpenSslProvider : public IProvider {
  public:
    COpenSslProvider()
        : m_stores(m_library),
          m_trust(m_library, m_stores),
          m_chain(m_library, m_stores, m_trust) {}

    // StoreOperations.cpp
    void EnumStores(CProviderCall& call, std::vector<std::wstring>& names) override;
    void EnumCerts(CProviderCall& call, StringArray& ids) override;
    void GetCert(CProviderCall& call, const std::wstring& id, FileData& octets) override;
    void SetCert(CProviderCall& call, const std::vector<PayloadItem>& items) override;
    void SetCert2(CProviderCall& call, const std::vector<PayloadItem>& items) override;
    std::unique_ptr<CertInfo2> FindCert(CProviderCall& call, const std::wstring& id) override;
    std::unique_ptr<CertInfo2> GetCertInfo2(CProviderCall& call, const std::wstring& id) override;

    // SignOperations.cpp
    void Sign(CProviderCall& call, const SignArguments& what, FileData& message) override;
    void CoSign(CProviderCall& call, const SignArguments& what,
                SerializableContainer& answer) override;
    void SignHash(CProviderCall& call, const SignArguments& what, FileData& message) override;
    void SignRaw(CProviderCall& call, const SignArguments& what, FileData& signature) override;
    void SignHashRaw(CProviderCall& call, const SignArguments& what, FileData& signature) override;
    void CreateHash(CProviderCall& call, const SignArguments& what, FileData& hash) override;

    // VerifyOperations.cpp
    bool Verifies() const noexcept override { return true; }
    std::unique_ptr<ISignatureJudge> Verify(CProviderCall& call,
                                            const VerifyArguments& what) override;
    void VerifyRaw(CProviderCall& call, const RawSignature& what,
                   VerificationResult& result) override;
    void CertValidation(CProviderCall& call, const CheckArguments& what,
                        SerializableContainer& answer) override;

  private:
    StoredCertificate ChooseSigner(CProviderCall& call, const std::wstring& id,
                                   const PasswordSource& password);
    Signer LoadSigner(CProviderCall& call, const SignArguments& what);
    CSignedMessage AddSignature(CProviderCall& call, const SignArguments& what);
    void Stamp(CProviderCall& call, const Signer& signer, CSignedMessage& message);
    void CheckSigner(CProviderCall& call, const InitString& params, X509* certificate) const;

    COpenSslLibrary m_library;
    CStores m_stores;
    CTrust m_trust;
    CChain m_chain;
};

}  // namespace ca
