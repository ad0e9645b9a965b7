#pragma once

#include "module/Provider.h"

namespace ca {

/// The reference provider: its operations are placeholders. It holds one certificate, and what it
/// signs is 64 octets of nothing.
class CFooProvider : public IProvider {
  public:
    void EnumStores(CProviderCall& call, std::vector<std::wstring>& names) override;
    void EnumCerts(CProviderCall& call, StringArray& ids) override;
    void GetCert(CProviderCall& call, const std::wstring& id, FileData& octets) override;
    void SetCert(CProviderCall& call, const std::vector<PayloadItem>& items) override;
    void SetCert2(CProviderCall& call, const std::vector<PayloadItem>& items) override;
    std::unique_ptr<CertInfo2> FindCert(CProviderCall& call, const std::wstring& id) override;
    std::unique_ptr<CertInfo2> GetCertInfo2(CProviderCall& call, const std::wstring& id) override;

    void Sign(CProviderCall& call, const SignArguments& what, FileData& message) override;
    void SignHash(CProviderCall& call, const SignArguments& what, FileData& message) override;
    std::unique_ptr<ISignatureJudge> Verify(CProviderCall& call,
                                            const VerifyArguments& what) override;
    void VerifyRaw(CProviderCall& call, const RawSignature& what,
                   VerificationResult& result) override;

    // Empty file data.
    void SignRaw(CProviderCall&, const SignArguments&, FileData&) override {}
    void SignHashRaw(CProviderCall&, const SignArguments&, FileData&) override {}
    void CreateHash(CProviderCall&, const SignArguments&, FileData&) override {}
    void Encrypt(CProviderCall&, std::span<const unsigned char>, FileData&) override {}

    // Operations that do nothing here and answer with nothing.
    void CertValidation(CProviderCall&, const CheckArguments&, SerializableContainer&) override {}
    void CoSign(CProviderCall&, const SignArguments&, SerializableContainer&) override {}
    void ShowSign(CProviderCall&) override {}
    void StreamEncode(CProviderCall&) override {}
    void StreamDecoding(CProviderCall&) override {}
    void TranslateCRL2(CProviderCall&) override {}
    void ParseCert(CProviderCall&) override {}
};

}  // namespace ca
