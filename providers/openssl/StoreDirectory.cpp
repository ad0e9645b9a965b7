#include "providers/openssl/StoreDirectory.h"

#include "common/AtomicFile.h"
#include "common/Encode.h"
#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/Log.h"
#include "common/sha1.h"
#include "providers/openssl/ProviderWords.h"
#include "providers/openssl/SecretText.h"
#include "records/Payload.h"
#include "records/fill/CertInfoFill.h"
#include "records/fill/CertificateBundle.h"
#include "records/fill/CrlInfoFill.h"

#include <algorithm>
#include <ctime>
#include <dirent.h>
#include <mutex>
#include <set>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr std::size_t kMaxFile = std::size_t{64} << 20U;    // octets of one file of a store
constexpr std::size_t kMaxStore = std::size_t{256} << 20U;  // octets of a store's files together
constexpr std::size_t kMaxFiles = 100000;
// So many files are looked at in each call; more of them once in kLookEvery.
constexpr std::size_t kFewFiles = 64;
constexpr std::int64_t kLookEvery = 1'000'000'000;  // nanoseconds
// A change within this time of another one may leave the directory's time as it is.
constexpr std::int64_t kSettledAfter = 100'000'000;  // nanoseconds

std::int64_t Nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

std::int64_t Now() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return Nanoseconds(now);
}

std::string Stem(const std::string& name) {
    return name.substr(0, name.rfind('.'));
}

// The names in a directory, sorted.
std::set<std::string> NamesIn(const std::string& path) {
    std::set<std::string> names;
    const ca::Owned<DIR, &::closedir> directory(::opendir(path.c_str()));
    if (directory == nullptr) {
        return names;
    }
    while (const dirent* entry = ::readdir(directory.get())) {
        if (entry->d_name[0] != '.') {
            names.emplace(entry->d_name);
        }
        if (names.size() > kMaxFiles) {
            throw ca::Exception(ca::kErrStore,
                                ca::Say(ca::Words::kStoreTooLarge) + ca::PathToWString(path));
        }
    }
    return names;
}

// What the key of a certificate is read from: the file as it is now.
std::string KeySource(const ca::StoredCertificate& certificate, const struct stat& file) {
    std::string source = certificate.keyFile + '\0' + ca::u16u8(certificate.id);
    for (const std::int64_t part :
         {static_cast<std::int64_t>(file.st_dev), static_cast<std::int64_t>(file.st_ino),
          static_cast<std::int64_t>(file.st_size), Nanoseconds(file.st_ctim)}) {
        source += ' ' + std::to_string(part);
    }
    return source;
}

std::span<unsigned char> Octets(std::string& text) {
    return {reinterpret_cast<unsigned char*>(text.data()), text.size()};
}

// Objects of a key's file; their octets are cleansed when they are given up.
class CSecretItems {
  public:
    explicit CSecretItems(std::string& text)
        : m_text(text), m_items(ca::DecodePayload(Octets(text))) {}
    CSecretItems(const CSecretItems&) = delete;
    CSecretItems& operator=(const CSecretItems&) = delete;
    ~CSecretItems() {
        for (const ca::PayloadItem& item : m_items) {
            OPENSSL_cleanse(item.octets.data(), item.octets.size());
        }
        ca::CSecretText::Cleanse(m_text);
    }

    const std::vector<ca::PayloadItem>& Get() const { return m_items; }

  private:
    std::string& m_text;
    std::vector<ca::PayloadItem> m_items;
};

}  // namespace

namespace ca {

const StoredCertificate* StoreContent::Find(std::wstring_view id) const {
    const auto found = byId.find(id);
    return found != byId.end() ? &certificates[found->second] : nullptr;
}

void StoreContent::Add(StoredCertificate certificate) {
    if (byId.try_emplace(certificate.id, certificates.size()).second) {
        certificates.push_back(std::move(certificate));
    }
}

CStoreDirectory::CStoreDirectory(const COpenSslLibrary& library, std::string path)
    : m_library(library),
      m_path(std::move(path)),
      m_content(std::make_shared<const StoreContent>()) {}

CStoreDirectory::Stamp CStoreDirectory::StampOf(const std::string& path, bool& isFile) {
    struct stat info = {};
    if (::stat(path.c_str(), &info) != 0) {
        isFile = false;
        return {};
    }
    isFile = S_ISREG(info.st_mode);
    return {info.st_dev, info.st_ino, Nanoseconds(info.st_ctim), info.st_size};
}

StoreContentPtr CStoreDirectory::Content() {
    bool isFile = false;
    const Stamp stamp = StampOf(m_path, isFile);
    Files former;
    StoreContentPtr known;
    {
        const std::lock_guard lock(m_mutex);
        if (stamp == m_stamp && m_isSettled) {
            known = m_content;
        }
        if (known != nullptr && m_files.size() > kFewFiles && Now() - m_looked < kLookEvery) {
            return known;
        }
        former = m_files;
    }
    // A file that is written in place leaves its directory as it was.
    if (known != nullptr && AreUnchanged(former)) {
        const std::lock_guard lock(m_mutex);
        m_looked = Now();
        return known;
    }
    const bool isSettled = Now() - stamp.changed > kSettledAfter;
    Files files = ReadFiles(former);
    StoreContentPtr content = Join(files);
    const std::lock_guard lock(m_mutex);
    m_stamp = stamp;
    m_isSettled = isSettled;
    m_files.swap(files);
    m_content = content;
    return content;
}

std::string CStoreDirectory::PathOf(const std::string& name) const {
    return name.empty() ? m_path : m_path + '/' + name;
}

bool CStoreDirectory::AreUnchanged(const Files& files) const {
    return std::ranges::all_of(files, [this](const auto& each) {
        bool isFile = false;
        return StampOf(PathOf(each.first), isFile) == each.second->stamp;
    });
}

CStoreDirectory::Files CStoreDirectory::ReadFiles(const Files& former) const {
    Files files;
    std::size_t octets = 0;
    bool isFile = false;
    StampOf(m_path, isFile);
    for (const std::string& name : isFile ? std::set<std::string>{""} : NamesIn(m_path)) {
        const std::string path = PathOf(name);
        const Stamp stamp = StampOf(path, isFile);
        if (!isFile || stamp.size > static_cast<std::int64_t>(kMaxFile)) {
            continue;
        }
        octets += static_cast<std::size_t>(stamp.size);
        if (octets > kMaxStore) {
            throw Exception(kErrStore, Say(Words::kStoreTooLarge) + PathToWString(m_path));
        }
        const auto known = former.find(name);
        const bool isSame = known != former.end() && known->second->stamp == stamp;
        files.emplace(name, isSame ? known->second : ReadFile(path, stamp));
    }
    return files;
}

// What cannot be read is passed over: one bad file does not close a store.
std::shared_ptr<const CStoreDirectory::File> CStoreDirectory::ReadFile(const std::string& path,
                                                                       const Stamp& stamp) const {
    auto file = std::make_shared<File>();
    file->stamp = stamp;
    std::string text;
    if (ReadWholeFile(path, kMaxFile, text) != FileStatus::kDone) {
        return file;
    }
    const CSecretItems items(text);
    CertificateBundle bundle;
    for (const PayloadItem& item : items.Get()) {
        CollectCertificates(item.octets, bundle);
        try {
            TakeItem(item, path, *file);
        } catch (const Exception& fault) {
            LogLine(PathToWString(path) + L": " + fault.message, /*isError=*/true);
        }
    }
    for (const auto& der : bundle.certificates) {
        file->certificates.push_back({Sha1Hex(der), {der.begin(), der.end()}, {}});
    }
    return file;
}

// What is no certificate.
void CStoreDirectory::TakeItem(const PayloadItem& item, const std::string& path, File& file) const {
    const ObjectKind* const kind = RecogniseObject(SourceOf(item));
    if (const KeyForm form = KeyFormOf(item); form == KeyForm::kEncrypted) {
        file.keys.emplace_back();
    } else if (form == KeyForm::kPlain) {
        const KeyPtr key = ReadKey(m_library, item.octets, form, {});
        file.keys.push_back({PublicKeyDigest(key.get())});
    } else if (kind != nullptr && kind->reader == ObjectReader::kCrl) {
        const std::span<const unsigned char> list = FindCrl(item.octets);
        file.crls.emplace_back(list.begin(), list.end());
    } else if (IsPkcs12(item)) {
        const CErrorScope scope;
        const Pkcs12Content content = LookIntoPkcs12(m_library, item.octets);
        for (const X509Ptr& each : content.certificates) {
            const std::vector<unsigned char> der = EncodingOf(each.get());
            file.certificates.push_back({Sha1Hex(der), der, {}});
        }
        if (content.hasKey) {
            file.keys.push_back({PublicKeyDigest(content.key.get())});
        }
        file.isClosed = file.isClosed || content.isClosed;
        if (content.isClosed) {
            LogLine(PathToWString(path) + L": " + Say(Words::kNeedsPassword), /*isError=*/false);
        }
    }
}

StoreContentPtr CStoreDirectory::Join(const Files& files) const {
    const bool hasKeys =
        std::ranges::any_of(files, [](const auto& each) { return !each.second->keys.empty(); });
    auto content = std::make_shared<StoreContent>();
    for (const auto& [name, file] : files) {
        content->crls.insert(content->crls.end(), file->crls.begin(), file->crls.end());
        if (file->isClosed) {
            content->closed.push_back(PathOf(name));
        }
        for (const StoredCertificate& certificate : file->certificates) {
            if (content->Find(certificate.id) == nullptr) {
                content->Add({certificate.id, certificate.der,
                              hasKeys ? FindKeyFile(files, name, certificate) : std::string()});
            }
        }
    }
    return content;
}

std::string CStoreDirectory::FindKeyFile(const Files& files, const std::string& name,
                                         const StoredCertificate& certificate) const {
    std::wstring digest;
    try {
        const X509Ptr parsed = m_library.ReadCertificate(certificate.der);
        digest = PublicKeyDigest(X509_get0_pubkey(parsed.get()));
    } catch (const Exception&) {
        return {};  // nothing that a key could belong to
    }
    for (const auto& [each, file] : files) {
        for (const FoundKey& key : file->keys) {
            const bool isEncrypted = key.publicDigest.empty();
            if (isEncrypted ? Stem(each) == Stem(name) : key.publicDigest == digest) {
                return PathOf(each);
            }
        }
    }
    return {};
}

KeyPtr CStoreDirectory::LoadKey(const COpenSslLibrary& library,
                                const StoredCertificate& certificate,
                                const PasswordSource& password) {
    if (certificate.keyFile.empty()) {
        throw Exception(kErrStore, Say(Words::kNoKey) + certificate.id);
    }
    const std::wstring shown = PathToWString(certificate.keyFile);
    struct stat info = {};
    if (::stat(certificate.keyFile.c_str(), &info) != 0) {
        throw Exception(kErrStore, Say(Words::kKeyNotRead) + shown);
    }
    if ((info.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        throw Exception(kErrStore, Say(Words::kKeyIsOpen) + shown);
    }
    const std::string source = KeySource(certificate, info);
    if (KeyPtr known = library.Keys().Find(source)) {
        return known;
    }
    std::string text;
    if (ReadWholeFile(certificate.keyFile, kMaxFile, text) != FileStatus::kDone) {
        throw Exception(kErrStore, Say(Words::kKeyNotRead) + shown);
    }
    const CSecretItems items(text);
    const X509Ptr parsed = library.ReadCertificate(certificate.der);
    for (const PayloadItem& item : items.Get()) {
        const KeyForm form = KeyFormOf(item);
        KeyPtr key;
        if (form != KeyForm::kNone) {
            key = ReadKey(library, item.octets, form, password);
        } else if (IsPkcs12(item)) {
            key = ReadPkcs12(library, item.octets, password).key;
        }
        if (key != nullptr && EVP_PKEY_eq(key.get(), X509_get0_pubkey(parsed.get())) == 1) {
            if (form == KeyForm::kPlain) {
                library.Keys().Add(source, key.get());
            }
            return key;
        }
    }
    throw Exception(kErrStore, Say(Words::kNoKey) + certificate.id);
}

std::vector<StoredCertificate> CStoreDirectory::Open(const COpenSslLibrary& library,
                                                     const std::string& path,
                                                     const PasswordSource& password) {
    std::vector<StoredCertificate> certificates;
    std::string text;
    if (ReadWholeFile(path, kMaxFile, text) != FileStatus::kDone) {
        return certificates;
    }
    const CSecretItems items(text);
    for (const PayloadItem& item : items.Get()) {
        try {
            const Pkcs12Content content =
                IsPkcs12(item) ? ReadPkcs12(library, item.octets, password) : Pkcs12Content();
            for (const X509Ptr& each : content.certificates) {
                const bool isIts =
                    content.key != nullptr &&
                    EVP_PKEY_eq(content.key.get(), X509_get0_pubkey(each.get())) == 1;
                const std::vector<unsigned char> der = EncodingOf(each.get());
                certificates.push_back({Sha1Hex(der), der, isIts ? path : std::string()});
            }
        } catch (const Exception& fault) {
            LogLine(PathToWString(path) + L": " + fault.message, /*isError=*/true);
        }
    }
    return certificates;
}

}  // namespace ca
