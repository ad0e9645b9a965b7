// Operations on stores and the certificates in them.

#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "module/ProviderCall.h"
#include "providers/openssl/OpenSslProvider.h"
#include "providers/openssl/Password.h"
#include "records/fill/CertInfoFill.h"

#include <set>

namespace ca {

std::unique_ptr<IProvider> CreateProvider() {
    return std::make_unique<COpenSslProvider>();
}

void COpenSslProvider::EnumStores(CProviderCall&, std::vector<std::wstring>& names) {
    names = CStores::OwnNames();
}

// A client that chose no store has the user's own certificates.
void COpenSslProvider::EnumCerts(CProviderCall& call, StringArray& ids) {
    const CErrorScope scope;
    StoreAddresses stores = call.Stores();
    if (stores.empty()) {
        stores.emplace_back(kStoreMy, /*machine=*/false);
    }
    CPassword password(call);
    const PasswordSource source = [&]() -> const std::string& { return password.Get(); };
    const bool isOpening = CPassword::OfParams(call).has_value();  // nobody is asked to list
    std::set<std::wstring> known;
    for (const StoreAddress& store : stores) {
        const StoreContentPtr content =
            isOpening ? m_stores.Opened(call, store, source) : m_stores.Content(call, store);
        for (const StoredCertificate& each : content->certificates) {
            if (known.insert(each.id).second) {
                ids.items.push_back(each.id);
            }
        }
    }
}

void COpenSslProvider::GetCert(CProviderCall& call, const std::wstring& id, FileData& octets) {
    const CErrorScope scope;
    const StoredCertificate found = m_stores.Require(call, id);
    octets.Assign(found.der.data(), static_cast<std::uint32_t>(found.der.size()));
}

void COpenSslProvider::SetCert(CProviderCall& call, const std::vector<PayloadItem>& items) {
    const CErrorScope scope;
    m_stores.Add(call, items);
}

void COpenSslProvider::SetCert2(CProviderCall& call, const std::vector<PayloadItem>& items) {
    SetCert(call, items);
}

std::unique_ptr<CertInfo2> COpenSslProvider::FindCert(CProviderCall& call, const std::wstring& id) {
    const CErrorScope scope;
    StoredCertificate found = m_stores.Require(call, id);
    auto info = std::make_unique<CertInfo2>();
    FillCertInfo(found.der, *info);
    info->hasPrivateKey = !found.keyFile.empty();
    return info;
}

std::unique_ptr<CertInfo2> COpenSslProvider::GetCertInfo2(CProviderCall& call,
                                                          const std::wstring& id) {
    return FindCert(call, id);
}

}  // namespace ca
