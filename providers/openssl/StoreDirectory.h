#pragma once

#include "common/ForkMutex.h"
#include "providers/openssl/OpenSslLibrary.h"
#include "providers/openssl/PrivateKeys.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ca {

/// A certificate in a store.
struct StoredCertificate {
    std::wstring id;                 ///< SHA-1 of the encoding, as everywhere
    std::vector<unsigned char> der;  ///< the encoding
    std::string keyFile;             ///< path of the file with its private key; "" for none
};

/// What a store held when it was looked at, in the order of the files' names; each certificate once.
struct StoreContent {
    std::vector<StoredCertificate> certificates;
    std::map<std::wstring_view, std::size_t> byId;  ///< indices of `certificates`
    std::vector<std::vector<unsigned char>> crls;   ///< revocation lists, encodings
    /// PKCS #12 files that have more in them, for those who know the password.
    std::vector<std::string> closed;

    void Add(StoredCertificate certificate);  ///< unless it is there
    /// Null for a certificate that is not there.
    const StoredCertificate* Find(std::wstring_view id) const;
};
using StoreContentPtr = std::shared_ptr<const StoreContent>;

/// A store: one directory, or one file, of certificates (DER, PEM, PKCS #7), private keys (PKCS #8,
/// encrypted or not, or in an older form), both together (PKCS #12), and revocation lists. Names of
/// files mean nothing, but that an encrypted key belongs to the certificates of its own file or of a
/// file with the same name before the last dot; a key that can be read is compared. Directories
/// inside and names that begin with a dot are passed over.
///
/// It is read again when the directory or one of its files changed (identity, times, size), and of
/// its files only those that did; in a store of many files, one written in place may be noticed a
/// second later. Safe from any thread.
class CStoreDirectory {
  public:
    CStoreDirectory(const COpenSslLibrary& library, std::string path);
    CStoreDirectory(const CStoreDirectory&) = delete;
    CStoreDirectory& operator=(const CStoreDirectory&) = delete;
    ~CStoreDirectory() = default;

    const std::string& Path() const noexcept { return m_path; }
    /// Never null; empty when there is no such directory.
    StoreContentPtr Content();
    /// The key in one of this store's files that fits the certificate. Throws 16102 when others may
    /// read the file or it does not have the key, and what ReadKey() throws.
    static KeyPtr LoadKey(const COpenSslLibrary& library, const StoredCertificate& certificate,
                          const PasswordSource& password);
    /// What a closed file holds; nothing, with a line in the log, when the password is not its.
    static std::vector<StoredCertificate> Open(const COpenSslLibrary& library,
                                               const std::string& path,
                                               const PasswordSource& password);

  private:
    struct Stamp {
        std::uint64_t device = 0;
        std::uint64_t inode = 0;
        std::int64_t changed = 0;  // nanoseconds
        std::int64_t size = 0;

        bool operator==(const Stamp&) const = default;
    };
    struct FoundKey {
        std::wstring publicDigest;  // "" for an encrypted one
    };
    struct File {
        Stamp stamp;
        std::vector<StoredCertificate> certificates;
        std::vector<FoundKey> keys;
        std::vector<std::vector<unsigned char>> crls;
        bool isClosed = false;  // see StoreContent::closed
    };
    using Files = std::map<std::string, std::shared_ptr<const File>>;  // by name

    static Stamp StampOf(const std::string& path, bool& isFile);
    std::string PathOf(const std::string& name) const;
    bool AreUnchanged(const Files& files) const;
    std::shared_ptr<const File> ReadFile(const std::string& path, const Stamp& stamp) const;
    void TakeItem(const PayloadItem& item, const std::string& path, File& file) const;
    Files ReadFiles(const Files& former) const;
    StoreContentPtr Join(const Files& files) const;
    std::string FindKeyFile(const Files& files, const std::string& name,
                            const StoredCertificate& certificate) const;

    const COpenSslLibrary& m_library;
    std::string m_path;
    CForkMutex m_mutex;  // guards what follows; not held while files are read
    Stamp m_stamp;
    std::int64_t m_looked = 0;  // when the files were found unchanged; nanoseconds
    bool m_isSettled = false;   // the directory was at rest when it was read
    Files m_files;
    StoreContentPtr m_content;
};

}  // namespace ca
