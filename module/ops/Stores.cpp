// Operations on a client's current stores.

#include "common/DecimalText.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/ErrorMessageHelper.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "common/Log.h"
#include "common/SeededHash.h"
#include "module/CryptoModule.h"
#include "module/Provider.h"
#include "module/ProviderCall.h"
#include "records/StringArray.h"

#include <memory>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

// Takes the addresses that a request brings; the first of the three places that has any counts.
// The list, the single address, then the older key: as CProviderCall::Stores() has them.
ca::StoreAddresses RequestedStores(ca::CryptPacket& packet) {
    ca::SerializableContainer& objects = packet.Request();
    if (auto* list = dynamic_cast<ca::StoreAddresses*>(objects.GetObj(ca::kTypeStoreAddresses))) {
        return std::move(*list);
    }
    if (const auto* single =
            dynamic_cast<const ca::StoreAddress*>(objects.GetObj(ca::kTypeStoreAddress))) {
        ca::StoreAddresses list;
        list.push_back(*single);
        return list;
    }
    if (!packet.request.currentStores) {
        throw ca::Exception(ca::kErrNoArgumentData, SetZORNAMessage(kMsgNoStores));
    }
    return std::move(*packet.request.currentStores);
}

// The temporary store is the module's own and needs no location.
bool IsUsable(const ca::StoreAddress& store) {
    return store.IsTempStore() || (!store.IsEmpty() && store.location != ca::kLocationNone);
}

// Adds a store name, each once without regard to letter case, as store names compare.
class CStoreNames {
  public:
    explicit CStoreNames(ca::StringArray& names) : m_names(names) {}

    void Add(const wchar_t* name) {
        if (name == nullptr) {
            return;
        }
        // Store names compare without case in every place that has them.
        std::wstring lowered = name;
        ca::tolower(lowered);
        if (m_seen.insert(std::move(lowered)).second) {
            m_names.items.emplace_back(name);
        }
    }

  private:
    ca::StringArray& m_names;
    // Hashed under a random key, since a stranger may choose the names.
    std::unordered_set<std::wstring, ca::SeededHash> m_seen;
};

}  // namespace

// Replaces the client's current stores; on refusal they stay as they were.
void CCryptoModule::SetCurStore(ca::CryptPacket& packet) {
    ca::StoreAddresses stores = RequestedStores(packet);
    LogEvent(SetZORNAMessage(kMsgCurStoreReceived), /*isError=*/false);
    // All are looked at before any is taken over.
    for (std::size_t i = 0; i < stores.size(); ++i) {
        if (!IsUsable(stores[i])) {
            throw ca::Exception(ca::kErrStoreAddress, SetZORNAMessage(kMsgStoreNowhere) +
                                                          (L"#" + ca::DecimalText(i + 1)) + L" \"" +
                                                          stores[i].name + L'"');
        }
    }
    if (!m_clients.ReplaceStores(packet.request.clientId, std::move(stores))) {
        // More memory than one client may have.
        const wchar_t* const reason = SetZORNAMessage(kMsgClientMemory);
        packet.response.errorMessage =
            GetErrorMessage(ca::kErrParameters, /*prefix=*/true) + L' ' + reason;
        ca::LogError(reason, CA_HERE, ca::kErrParameters, /*throwIt=*/true);
    }
    LogEvent(SetZORNAMessage(kMsgCurStoreAssigned), /*isError=*/false);
}

// Answers with the client's current stores.
void CCryptoModule::GetCurStore(ca::CryptPacket& packet) {
    auto stores =
        std::make_unique<ca::StoreAddresses>(*m_clients.CurrentStores(packet.request.clientId));
    packet.Response().SetObject(stores.release(), /*clear=*/true);  // the container owns it now
}

// Answers with the names of the provider's own stores and of the client's current ones.
void CCryptoModule::EnumStore(ca::CryptPacket& packet) {
    auto names = std::make_unique<ca::StringArray>(ca::kTypeStores);
    CStoreNames list(*names);
    std::vector<std::wstring> own;
    ca::CProviderCall call(packet, *this);
    m_provider->EnumStores(call, own);
    for (const std::wstring& name : own) {
        list.Add(name.c_str());
    }
    const StoresSnapshot stores = m_clients.CurrentStores(packet.request.clientId);
    for (const ca::StoreAddress& store : *stores) {
        list.Add(store.GetName());
    }
    packet.Response().SetObject(names.release(), /*clear=*/true);
}
