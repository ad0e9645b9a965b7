#include "module/Provider.h"

#include "common/ErrorCodes.h"
#include "common/Exception.h"

namespace {

// An operation that a provider does not have is answered like an unknown mode.
[[noreturn]] void Refuse() {
    throw ca::Exception(ca::kErrModeNotSupported);
}

}  // namespace

namespace ca {

void IProvider::EnumStores(CProviderCall&, std::vector<std::wstring>&) {
    Refuse();
}

void IProvider::EnumCerts(CProviderCall&, StringArray&) {
    Refuse();
}

void IProvider::GetCert(CProviderCall&, const std::wstring&, FileData&) {
    Refuse();
}

void IProvider::SetCert(CProviderCall&, const std::vector<PayloadItem>&) {
    Refuse();
}

void IProvider::SetCert2(CProviderCall&, const std::vector<PayloadItem>&) {
    Refuse();
}

std::unique_ptr<CertInfo2> IProvider::FindCert(CProviderCall&, const std::wstring&) {
    Refuse();
}

std::unique_ptr<CertInfo2> IProvider::GetCertInfo2(CProviderCall&, const std::wstring&) {
    Refuse();
}

void IProvider::CertValidation(CProviderCall&, const CheckArguments&, SerializableContainer&) {
    Refuse();
}

void IProvider::Sign(CProviderCall&, const SignArguments&, FileData&) {
    Refuse();
}

void IProvider::CoSign(CProviderCall&, const SignArguments&, SerializableContainer&) {
    Refuse();
}

void IProvider::SignHash(CProviderCall&, const SignArguments&, FileData&) {
    Refuse();
}

void IProvider::SignRaw(CProviderCall&, const SignArguments&, FileData&) {
    Refuse();
}

void IProvider::SignHashRaw(CProviderCall&, const SignArguments&, FileData&) {
    Refuse();
}

void IProvider::CreateHash(CProviderCall&, const SignArguments&, FileData&) {
    Refuse();
}

std::unique_ptr<ISignatureJudge> IProvider::Verify(CProviderCall&, const VerifyArguments&) {
    Refuse();
}

void IProvider::VerifyRaw(CProviderCall&, const RawSignature&, VerificationResult&) {
    Refuse();
}

void IProvider::Encrypt(CProviderCall&, std::span<const unsigned char>, FileData&) {
    Refuse();
}

void IProvider::ShowSign(CProviderCall&) {
    Refuse();
}

void IProvider::StreamEncode(CProviderCall&) {
    Refuse();
}

void IProvider::StreamDecoding(CProviderCall&) {
    Refuse();
}

void IProvider::TranslateCRL2(CProviderCall&) {
    Refuse();
}

void IProvider::ParseCert(CProviderCall&) {
    Refuse();
}

}  // namespace ca
