#include "module/ProviderCall.h"

#include "module/CallContext.h"
#include "module/CryptoModule.h"

#include <utility>

namespace ca {

StoreAddresses CProviderCall::Stores() const {
    // The request's list, its single address, its older key, then what the client has set: the
    // first that is there counts.
    SerializableContainer& objects = m_packet.Request();
    if (const auto* list =
            dynamic_cast<const StoreAddresses*>(objects.GetObj(kTypeStoreAddresses))) {
        return *list;
    }
    if (const auto* single = dynamic_cast<const StoreAddress*>(objects.GetObj(kTypeStoreAddress))) {
        StoreAddresses list;
        list.push_back(*single);
        return list;
    }
    if (m_packet.request.currentStores) {
        return *m_packet.request.currentStores;
    }
    return *m_module.Clients().CurrentStores(m_packet.request.clientId);
}

CertificatesSnapshot CProviderCall::TempCertificates() const {
    return m_module.Clients().TempCertificates(m_packet.request.clientId);
}

bool CProviderCall::ReplaceTempCertificates(std::vector<std::vector<unsigned char>> certificates) {
    return m_module.Clients().ReplaceTempCertificates(m_packet.request.clientId,
                                                      std::move(certificates));
}

bool CProviderCall::MayUseKeys() const {
    return m_packet.context->MayUseKeys();
}

InitString CProviderCall::Params() const {
    return InitString(m_packet.context->InitParams());
}

const PkiSettings& CProviderCall::Pki() const {
    return m_module.PkiConfig().Settings();
}

HttpSettings CProviderCall::FetchSettings() const {
    // Null where nobody set them, as in tests.
    const TransferSettings* const transfers = m_packet.Transfers();
    return transfers != nullptr ? transfers->fetch : HttpSettings();
}

bool CProviderCall::IsSilent() const {
    return m_module.IsSilent();
}

void CProviderCall::NeedCert(std::wstring id) {
    m_packet.response.needCertId = std::move(id);
}

}  // namespace ca
