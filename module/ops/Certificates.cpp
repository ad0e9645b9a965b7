// Operations on the provider's certificates.

#include "common/Lng.h"
#include "common/Log.h"
#include "module/CryptoModule.h"
#include "module/Provider.h"
#include "module/ProviderCall.h"
#include "module/RecordTypes.h"
#include "records/FileData.h"
#include "records/StringArray.h"

#include <memory>

// Answers with the identifiers of the certificates.
void CCryptoModule::EnumCerts(ca::CryptPacket& packet) {
    auto ids = std::make_unique<ca::StringArray>(ca::kTypeCertificates);
    ca::CProviderCall call(packet, *this);
    m_provider->EnumCerts(call, *ids);
    packet.Response().SetObject(ids.release(), /*clear=*/true);  // the container owns it now
}

// Answers with a certificate's encoding.
void CCryptoModule::GetCert(ca::CryptPacket& packet) {
    auto octets = std::make_unique<ca::FileData>();
    ca::CProviderCall call(packet, *this);
    m_provider->GetCert(call, packet.request.senderCertId, *octets);
    packet.Response().SetObject(octets.release(), /*clear=*/true);
}

// Answers with the description of one of the provider's certificates.
void CCryptoModule::GetCertInfo2(ca::CryptPacket& packet) {
    ca::CProviderCall call(packet, *this);
    auto info = m_provider->GetCertInfo2(call, packet.request.senderCertId);
    packet.Response().SetObject(info.release(), /*clear=*/true);
    LogEvent(SetZORNAMessage(kMsgCertInfoReturned), /*isError=*/false);
}

// Judges the certificate of the file data, or the one that the request names.
void CCryptoModule::CertValidation(ca::CryptPacket& packet) {
    ca::CProviderCall call(packet, *this);
    ca::FileData* const payload = ca::FindFileData(packet.Request());
    const auto octets = payload != nullptr
                            ? std::optional(std::span(payload->data(), payload->size()))
                            : std::nullopt;
    m_provider->CertValidation(call, {octets, packet.request.senderCertId}, packet.Response());
}

void CCryptoModule::ParseCert(ca::CryptPacket& packet) {
    ca::CProviderCall call(packet, *this);
    m_provider->ParseCert(call);
}
