#include "providers/foo/FooProvider.h"

#include "module/ops/CertificateDescriptions.h"
#include "providers/foo/ProviderCertificate.h"
#include "records/StoreAddress.h"
#include "records/fill/ValidityText.h"

namespace {

constexpr std::uint32_t kSignatureSize = 64;  // octets of the placeholder

}  // namespace

namespace ca {

std::unique_ptr<IProvider> CreateProvider() {
    return std::make_unique<CFooProvider>();
}

void CFooProvider::EnumStores(CProviderCall&, std::vector<std::wstring>& names) {
    names = {kStoreMy, kStoreTemporary};
}

void CFooProvider::EnumCerts(CProviderCall&, StringArray& ids) {
    ids.items.emplace_back(kProviderCertId);
}

// Placeholder: no octets.
void CFooProvider::GetCert(CProviderCall&, const std::wstring&, FileData&) {}

// The certificates must be readable; nothing is kept, since this provider has no store of its own.
void CFooProvider::SetCert(CProviderCall&, const std::vector<PayloadItem>& items) {
    CheckCertificates(items);
}

void CFooProvider::SetCert2(CProviderCall&, const std::vector<PayloadItem>& items) {
    CheckCertificates(items);
}

std::unique_ptr<CertInfo2> CFooProvider::FindCert(CProviderCall&, const std::wstring& id) {
    return FindProviderCertificate(id);
}

// Placeholder: names and identifier only, not verified.
std::unique_ptr<CertInfo2> CFooProvider::GetCertInfo2(CProviderCall&, const std::wstring&) {
    return DescribeProviderCertificate();
}

void CFooProvider::Sign(CProviderCall&, const SignArguments&, FileData& message) {
    message.AssignZeros(kSignatureSize);
}

void CFooProvider::SignHash(CProviderCall& call, const SignArguments& what, FileData& message) {
    Sign(call, what, message);
}

// Nothing is verified, and the records say so already.
std::unique_ptr<ISignatureJudge> CFooProvider::Verify(CProviderCall&, const VerifyArguments&) {
    return nullptr;
}

// Nothing is checked, and the codes say so.
void CFooProvider::VerifyRaw(CProviderCall&, const RawSignature&, VerificationResult& result) {
    FillNotVerified(result);
}

}  // namespace ca
