// Operations on certificates: placeholder results of a provider that holds one certificate.

#include "common/Lng.h"
#include "common/Log.h"
#include "module/CryptoModule.h"
#include "module/ops/ProviderCertificate.h"
#include "records/FileData.h"
#include "records/StringArray.h"

#include <memory>

// Answers with the identifiers of the certificates. Placeholder: the one certificate.
void CCryptoModule::EnumCerts(ca::CryptPacket& packet) {
    auto ids = std::make_unique<ca::StringArray>(ca::kTypeCertificates);
    ids->items.emplace_back(ca::kProviderCertId);
    packet.Response().SetObject(ids.release(), /*clear=*/true);  // the container owns it now
}

// Answers with a certificate's encoding. Placeholder: empty file data.
void CCryptoModule::GetCert(ca::CryptPacket& packet) {
    packet.Response().SetObject(std::make_unique<ca::FileData>().release(), /*clear=*/true);
}

// Answers with a certificate's description. Placeholder: names and identifier only, not verified.
void CCryptoModule::GetCertInfo2(ca::CryptPacket& packet) {
    packet.Response().SetObject(ca::DescribeProviderCertificate().release(), /*clear=*/true);
    LogEvent(SetZORNAMessage(kMsgCertInfoReturned), false);
}
