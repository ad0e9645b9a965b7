#include "providers/openssl/Stores.h"

#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Lng.h"
#include "common/Log.h"
#include "common/StorePaths.h"
#include "common/sha1.h"
#include "providers/openssl/Password.h"
#include "providers/openssl/ProviderWords.h"
#include "records/fill/CertInfoFill.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <mutex>
#include <utility>

namespace {

constexpr std::size_t kMaxOpened = 16;  // closed files of a store: each is slow to open by design

}  // namespace

namespace ca {

std::vector<std::wstring> CStores::OwnNames() {
    std::vector<std::wstring> names(std::begin(kOwnStores), std::end(kOwnStores));
    names.emplace_back(kStoreTemporary);
    return names;
}

std::string CStores::PathOf(const CProviderCall& call, const StoreAddress& store) {
    const bool isHere = store.location == kLocationCurrentUser ||
                        (store.location == kLocationLocalMachine && store.IsLocal());
    std::string path =
        StoreDirectoryPath(call.Pki().stores, store.location == kLocationLocalMachine, store.name);
    if (!isHere || path.empty()) {
        throw Exception(kErrStoreAddress, Say(Words::kStoreElsewhere));
    }
    return path;
}

std::shared_ptr<CStoreDirectory> CStores::Directory(const std::string& path) {
    {
        const std::lock_guard lock(m_mutex);
        if (const auto known = m_directories.find(path); known != m_directories.end()) {
            return known->second;
        }
    }
    // Outside of the lock: it has one of its own. Where another thread was faster, that one counts.
    auto fresh = std::make_shared<CStoreDirectory>(m_library, path);
    std::error_code error;
    if (!std::filesystem::exists(path, error)) {
        return fresh;  // names of stores that are not there are the client's: they are not kept
    }
    const std::lock_guard lock(m_mutex);
    return m_directories.try_emplace(path, fresh).first->second;
}

StoreContentPtr CStores::Content(const CProviderCall& call, const StoreAddress& store) {
    if (!store.IsTempStore()) {
        return Directory(PathOf(call, store))->Content();
    }
    auto content = std::make_shared<StoreContent>();
    const CertificatesSnapshot held = call.TempCertificates();
    for (const std::vector<unsigned char>& der : *held) {
        content->Add({Sha1Hex(der), der, {}});
    }
    return content;
}

StoreContentPtr CStores::At(const std::string& path) {
    return Directory(path)->Content();
}

std::vector<StoreContentPtr> CStores::Named(const CProviderCall& call, const wchar_t* name) {
    return {Content(call, StoreAddress(name, /*machine=*/false)),
            Content(call, StoreAddress(name, /*machine=*/true))};
}

std::vector<StoreContentPtr> CStores::OfSigners(const CProviderCall& call) {
    std::vector<StoreContentPtr> contents;
    for (const StoreAddress& store : call.Stores()) {
        contents.push_back(Content(call, store));
    }
    for (const wchar_t* name : {kStoreMy, L"AddressBook", L"CA"}) {
        std::ranges::move(Named(call, name), std::back_inserter(contents));
    }
    return contents;
}

StoreContentPtr CStores::Opened(const CProviderCall& call, const StoreAddress& store,
                                const PasswordSource& password) {
    StoreContentPtr known = Content(call, store);
    if (known->closed.empty()) {
        return known;
    }
    auto content = std::make_shared<StoreContent>();
    std::ranges::for_each(known->certificates, [&](const auto& each) { content->Add(each); });
    content->crls = known->crls;
    for (std::size_t i = 0; i < known->closed.size(); ++i) {
        if (i == kMaxOpened) {
            LogLine(Say(Words::kTooManyClosed), /*isError=*/true);
            break;
        }
        for (StoredCertificate& each :
             CStoreDirectory::Open(m_library, known->closed[i], password)) {
            content->Add(std::move(each));
        }
    }
    return content;
}

std::optional<StoredCertificate> CStores::Find(const CProviderCall& call, const std::wstring& id,
                                               const PasswordSource& password) {
    std::wstring lowered = id;
    ca::tolower(lowered);
    for (const StoreAddress& store : call.Stores()) {
        const StoreContentPtr content = Content(call, store);
        if (const StoredCertificate* found = content->Find(lowered)) {
            return *found;
        }
    }
    StoreAddress temporary;
    temporary.name = kStoreTemporary;
    std::vector<StoreContentPtr> all{Content(call, temporary)};
    for (const wchar_t* name : kOwnStores) {
        std::ranges::move(Named(call, name), std::back_inserter(all));
    }
    for (const StoreContentPtr& content : all) {
        if (const StoredCertificate* found = content->Find(lowered)) {
            return *found;
        }
    }
    return FindClosed(call, lowered, password);
}

// The user's keys are in the stores of the call, or in MY.
std::optional<StoredCertificate> CStores::FindClosed(const CProviderCall& call,
                                                     const std::wstring& id,
                                                     const PasswordSource& password) {
    CPassword own(call);
    const PasswordSource given = [&]() -> const std::string& { return own.Get(); };
    if (!password && !CPassword::OfParams(call)) {
        return std::nullopt;
    }
    StoreAddresses stores = call.Stores();
    stores.emplace_back(kStoreMy, /*machine=*/false);
    stores.emplace_back(kStoreMy, /*machine=*/true);
    for (const StoreAddress& store : stores) {
        const StoreContentPtr content = Opened(call, store, password ? password : given);
        if (const StoredCertificate* found = content->Find(id)) {
            return *found;
        }
    }
    return std::nullopt;
}

StoredCertificate CStores::Require(const CProviderCall& call, const std::wstring& id) {
    if (id.empty()) {
        throw Exception(kErrNoArgumentData, Say(Words::kNoCertificateNamed));
    }
    std::optional<StoredCertificate> found = Find(call, id);
    if (!found) {
        throw Exception(kErrStore, SetZORNAMessage(kMsgNoSuchCertificate) + (L'"' + id + L'"'));
    }
    return std::move(*found);
}

}  // namespace ca
