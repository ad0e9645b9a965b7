// Adding to stores.

#include "common/AtomicFile.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/sha1.h"
#include "module/ops/CertificateDescriptions.h"
#include "module/ops/RefusedObjects.h"
#include "providers/openssl/Password.h"
#include "providers/openssl/ProviderWords.h"
#include "providers/openssl/Stores.h"
#include "records/fill/CertInfoFill.h"
#include "records/objects/ObjectKinds.h"

#include <openssl/x509v3.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace {

// Files that were written, which go again unless all could be.
class CWrittenFiles {
  public:
    CWrittenFiles() = default;
    CWrittenFiles(const CWrittenFiles&) = delete;
    CWrittenFiles& operator=(const CWrittenFiles&) = delete;
    ~CWrittenFiles() {
        for (const std::string& path : m_paths) {
            ::unlink(path.c_str());
        }
    }

    void Write(const std::string& path, std::string_view octets, mode_t mode) {
        std::error_code error;
        if (std::filesystem::exists(path, error)) {
            return;
        }
        m_paths.push_back(path);
        if (ca::ReplaceFile(path, octets, mode) != ca::FileStatus::kDone) {
            m_paths.pop_back();  // it left nothing behind
            throw ca::Exception(ca::kErrStore,
                                ca::Say(ca::Words::kStoreNotWritten) + ca::PathToWString(path));
        }
    }
    void Keep() { m_paths.clear(); }

  private:
    std::vector<std::string> m_paths;
};

void MakeDirectory(const std::string& path, bool isMachine) {
    namespace fs = std::filesystem;
    std::error_code error;
    if (fs::create_directories(path, error)) {
        fs::permissions(path, isMachine ? fs::perms(0755) : fs::perms::owner_all, error);
    }
    if (!fs::is_directory(path, error)) {
        throw ca::Exception(ca::kErrStore,
                            ca::Say(ca::Words::kStoreNotWritten) + ca::PathToWString(path));
    }
}

}  // namespace

namespace ca {

/// A certificate that is to be added.
struct CStores::Addition {
    std::wstring id;
    std::vector<unsigned char> der;
    std::shared_ptr<EVP_PKEY> key;  // null: without
    bool isAuthority = false;
    std::string password;  // of the key's file; "" for none
};

// Keys find their certificates by the public key; one that finds none is refused, since nothing
// could name it afterwards.
std::vector<CStores::Addition> CStores::Collect(const CProviderCall& call,
                                                const std::vector<PayloadItem>& items) const {
    CPassword password(call);
    const PasswordSource source = [&]() -> const std::string& { return password.Get(); };
    std::vector<Addition> additions;
    std::set<std::wstring> known;
    std::vector<KeyPtr> keys;
    const auto add = [&](const X509* certificate) {
        std::vector<unsigned char> der = EncodingOf(certificate);
        std::wstring id = Sha1Hex(der);
        if (known.insert(id).second) {
            const bool isAuthority = X509_check_ca(const_cast<X509*>(certificate)) > 0;
            additions.push_back({std::move(id), std::move(der), nullptr, isAuthority, {}});
        }
    };
    CertificateBundle bundle;
    for (const PayloadItem& item : items) {
        if (const KeyForm form = KeyFormOf(item); form != KeyForm::kNone) {
            keys.push_back(ReadKey(m_library, item.octets, form, source));
        } else if (IsPkcs12(item)) {
            Pkcs12Content content = ReadPkcs12(m_library, item.octets, source);
            std::ranges::for_each(content.certificates, add, &X509Ptr::get);
            if (content.key != nullptr) {
                keys.push_back(std::move(content.key));
            }
        } else {
            CollectCertificates(item.octets, bundle);
        }
    }
    for (const auto& der : bundle.certificates) {
        add(m_library.ReadCertificate(der).get());
    }
    if (additions.empty()) {
        throw Exception(kErrCertificate, SayRefused(items, &CertificateFault));
    }
    const std::string secret =
        keys.empty() ? std::string() : CPassword::OfParams(call).value_or(std::string());
    for (KeyPtr& key : keys) {
        const auto owner = std::ranges::find_if(additions, [&](const Addition& each) {
            const X509Ptr certificate = m_library.ReadCertificate(each.der);
            return EVP_PKEY_eq(key.get(), X509_get0_pubkey(certificate.get())) == 1;
        });
        if (owner == additions.end()) {
            throw Exception(kErrCertificate, Say(Words::kKeyWithoutCertificate));
        }
        owner->key = std::move(key);
        owner->password = secret;
    }
    return additions;
}

StoreAddress CStores::TargetOf(const CProviderCall& call, const Addition& addition) const {
    const StoreAddresses given = call.Stores();
    if (!given.empty()) {
        return given.front();
    }
    const wchar_t* const name = addition.key != nullptr ? kStoreMy
                                : addition.isAuthority  ? L"CA"
                                                        : L"AddressBook";
    return {name, /*machine=*/false};
}

void CStores::AddToTemporary(CProviderCall& call, const std::vector<Addition>& additions) {
    std::vector<std::vector<unsigned char>> certificates = *call.TempCertificates();
    for (const Addition& addition : additions) {
        if (addition.key != nullptr) {
            throw Exception(kErrParameters, Say(Words::kTempTakesNoKeys));
        }
        if (std::ranges::find(certificates, addition.der) == certificates.end()) {
            certificates.push_back(addition.der);
        }
    }
    if (!call.ReplaceTempCertificates(std::move(certificates))) {
        throw Exception(kErrParameters);
    }
}

void CStores::Add(CProviderCall& call, const std::vector<PayloadItem>& items) {
    const std::vector<Addition> additions = Collect(call, items);
    if (TargetOf(call, additions.front()).IsTempStore()) {
        AddToTemporary(call, additions);
        return;
    }
    CWrittenFiles written;
    for (const Addition& addition : additions) {
        const StoreAddress target = TargetOf(call, addition);
        const std::string path = PathOf(call, target);
        const bool isMachine = target.location == kLocationLocalMachine;
        // Trust, keys and what others use are not for every client of a service to change.
        const bool isGuarded = isMachine || addition.key != nullptr || path.ends_with("/Root");
        if (isGuarded && !call.MayUseKeys()) {
            throw Exception(kErrPrivateKeyAccess);
        }
        const StoreContentPtr content = Directory(path)->Content();
        const StoredCertificate* const former = content->Find(addition.id);
        if (former != nullptr && (addition.key == nullptr || !former->keyFile.empty())) {
            continue;
        }
        MakeDirectory(path, isMachine);
        const std::string stem = path + '/' + u16u8(addition.id);
        if (addition.key != nullptr) {
            std::string octets = WriteKey(m_library, addition.key.get(), addition.password);
            const CSecretText cleansed(std::move(octets));
            written.Write(stem + ".key", cleansed.Get(), 0600);
        }
        if (former == nullptr) {
            written.Write(stem + ".cer",
                          {reinterpret_cast<const char*>(addition.der.data()), addition.der.size()},
                          isMachine ? 0644 : 0600);
        }
    }
    written.Keep();
}

}  // namespace ca
