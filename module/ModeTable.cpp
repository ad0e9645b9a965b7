#include "module/CryptoModule.h"

#include <algorithm>
#include <iterator>

// The operations of the interface: number, log text, handler, gate. Two numbers of one handler are
// meant so: the handler reads the mode where they differ.
// clang-format off
const CCryptoModule::CModeRow CCryptoModule::kModes[] = {
    {11, nullptr,                nullptr,                           kGated},
    {12, L"> Encrypt",           &CCryptoModule::Encrypt,           kGated},
    {14, L"> Sign",              &CCryptoModule::Sign,              kGated},
    {15, L"> Verify",            &CCryptoModule::Verify,            kOpen},
    {21, L"> SetCert",           &CCryptoModule::SetCert,           kOpen},
    {22, L"> GetCertInfo",       &CCryptoModule::GetCertInfo,       kOpen},
    {23, L"> GetCRL",            &CCryptoModule::GetCRL,            kOpen},
    {24, nullptr,                nullptr,                           kOpen},
    {25, L"> CertValidation",    &CCryptoModule::CertValidation,    kOpen},
    {26, L"> Encrypt",           &CCryptoModule::Encrypt,           kGated},
    {27, L"> Sign",              &CCryptoModule::Sign,              kGated},
    {28, L"> CoSign",            &CCryptoModule::CoSign,            kGated},
    {29, L"> GetSignInfo",       &CCryptoModule::GetSignInfo,       kOpen},
    {30, L"> ShowSign",          &CCryptoModule::ShowSign,          kGated},
    {31, L"> StreamEncode",      &CCryptoModule::StreamEncode,      kGated},
    {32, L"> StreamEncode",      &CCryptoModule::StreamEncode,      kGated},
    {33, L"> StreamDecoding",    &CCryptoModule::StreamDecoding,    kGated},
    {34, L"> GetCertInfo2",      &CCryptoModule::GetCertInfo2,      kOpen},
    {35, L"> GetCert",           &CCryptoModule::GetCert,           kOpen},
    {36, L"> SetCurStore",       &CCryptoModule::SetCurStore,       kOpen},
    {37, L"> EnumStore",         &CCryptoModule::EnumStore,         kOpen},
    {38, L"> EnumCerts",         &CCryptoModule::EnumCerts,         kOpen},
    {39, L"> ShowCert",          &CCryptoModule::ShowCert,          kGated},
    {40, L"> TranslateCRL2",     &CCryptoModule::TranslateCRL2,     kOpen},
    {41, L"> GetRecipientsList", &CCryptoModule::GetRecipientsList, kOpen},
    {42, nullptr,                nullptr,                           kOpen},
    {44, L"> GetSignType",       &CCryptoModule::GetSignType,       kOpen},
    {45, L"> SetCert2",          &CCryptoModule::SetCert2,          kOpen},
    {47, L"> GetCurStore",       &CCryptoModule::GetCurStore,       kOpen},
    {50, L"> CreateHash",        &CCryptoModule::CreateHash,        kOpen},
    {51, L"> SignRaw",           &CCryptoModule::SignRaw,           kGated},
    {52, L"> VerifyRaw",         &CCryptoModule::VerifyRaw,         kOpen},
    {56, L"> SignHash",          &CCryptoModule::SignHash,          kGated},
    {57, L"> GetSignInfo2",      &CCryptoModule::GetSignInfo2,      kOpen},
    {58, L"> SignHashRaw",       &CCryptoModule::SignHashRaw,       kGated},
    {61, L"> ReleaseClient",     &CCryptoModule::ReleaseClient,     kOpen},
    {65, L"> ParseCert",         &CCryptoModule::ParseCert,         kOpen},
};
// clang-format on

const CCryptoModule::CModeRow* CCryptoModule::FindMode(int mode) noexcept {
    const CModeRow* row =
        std::lower_bound(std::begin(kModes), std::end(kModes), mode,
                         [](const CModeRow& each, int wanted) { return each.mode < wanted; });
    return row != std::end(kModes) && row->mode == mode ? row : nullptr;
}
