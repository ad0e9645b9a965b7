#pragma once

#include "module/ProviderCall.h"
#include "providers/openssl/StoreDirectory.h"
#include "records/Payload.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ca {

/// The stores of this machine: a directory each, named like the store, below that of the user
/// ("sscu") or of the machine ("sslm"); and the client's temporary store, in memory.
class CStores {
  public:
    explicit CStores(const COpenSslLibrary& library) : m_library(library) {}
    CStores(const CStores&) = delete;
    CStores& operator=(const CStores&) = delete;
    ~CStores() = default;

    /// Names of the stores that each user has.
    static std::vector<std::wstring> OwnNames();

    /// What a store holds. Throws 16252 for a store that is on no directory of this machine.
    StoreContentPtr Content(const CProviderCall& call, const StoreAddress& store);
    /// The same with what is in its closed PKCS #12 files, of which 16 are opened.
    StoreContentPtr Opened(const CProviderCall& call, const StoreAddress& store,
                           const PasswordSource& password);
    /// What a directory or file holds that is not a store of a client's.
    StoreContentPtr At(const std::string& path);
    /// Of the stores of this name, the user's and the machine's.
    std::vector<StoreContentPtr> Named(const CProviderCall& call, const wchar_t* name);
    /// Where certificates of others' signatures are looked for: the call's stores, then all with
    /// certificates that are not trusted by themselves.
    std::vector<StoreContentPtr> OfSigners(const CProviderCall& call);
    /// A certificate of the call's stores, else of all stores; where none has it, and there is a
    /// password, in their closed files. None for an unknown one.
    /// \param password  null: that of the call's parameters, if any.
    std::optional<StoredCertificate> Find(const CProviderCall& call, const std::wstring& id,
                                          const PasswordSource& password = {});
    /// The same; throws 16118 for no identifier, 16102 for an unknown one.
    StoredCertificate Require(const CProviderCall& call, const std::wstring& id);

    /// Adds the certificates and keys of a payload: to the first of the call's stores; where it
    /// names none, certificates with their keys to the user's MY, of authorities to CA, the others
    /// to AddressBook. All of it or nothing; what is there already is not written again.
    /// Throws 16113 when there is nothing to add, 50 where the gate would have to be open, 16102
    /// when the directory cannot be written.
    void Add(CProviderCall& call, const std::vector<PayloadItem>& items);

  private:
    struct Addition;

    std::optional<StoredCertificate> FindClosed(const CProviderCall& call, const std::wstring& id,
                                                const PasswordSource& password);
    /// Path of a store's directory.
    static std::string PathOf(const CProviderCall& call, const StoreAddress& store);
    std::shared_ptr<CStoreDirectory> Directory(const std::string& path);
    std::vector<Addition> Collect(const CProviderCall& call,
                                  const std::vector<PayloadItem>& items) const;
    StoreAddress TargetOf(const CProviderCall& call, const Addition& addition) const;
    static void AddToTemporary(CProviderCall& call, const std::vector<Addition>& additions);

    const COpenSslLibrary& m_library;
    CForkMutex m_mutex;
    std::map<std::string, std::shared_ptr<CStoreDirectory>> m_directories;  // by path
};

}  // namespace ca
