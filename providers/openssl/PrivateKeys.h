#pragma once

#include "providers/openssl/OpenSslLibrary.h"
#include "records/objects/ObjectKinds.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace ca {

/// Gives the password when one is needed; throws 16402 where there is none.
using PasswordSource = std::function<const std::string&()>;

/// Whether an object is a private key (PKCS #8, encrypted or not, or an older form); none for
/// what is no key.
enum class KeyForm : std::uint8_t { kNone, kPlain, kEncrypted };
KeyForm KeyFormOf(const PayloadItem& item);

/// The private key in an object of that form. Throws 16268 when the password does not open it,
/// 16303 for an algorithm that OpenSSL does not have, 16306 for what is none.
KeyPtr ReadKey(const COpenSslLibrary& library, std::span<const unsigned char> octets, KeyForm form,
               const PasswordSource& password);

/// The key as PKCS #8 (DER), encrypted with AES-256 when the password is not empty. To be cleansed.
std::string WriteKey(const COpenSslLibrary& library, const EVP_PKEY* key,
                     const std::string& password);

/// SHA-1 of a public key as a certificate holds it: what tells which key is whose. "" for none.
std::wstring PublicKeyDigest(const EVP_PKEY* key);

/// What a PKCS #12 file (RFC 7292) holds.
struct Pkcs12Content {
    KeyPtr key;  ///< null: none
    std::vector<X509Ptr> certificates;
    bool hasKey = false;    ///< there is one, be it encrypted
    bool isClosed = false;  ///< there is more in it, which is encrypted
};
bool IsPkcs12(const PayloadItem& item);
/// Throws 16268 when the password does not open it.
Pkcs12Content ReadPkcs12(const COpenSslLibrary& library, std::span<const unsigned char> octets,
                         const PasswordSource& password);
/// What it shows to those who have no password: all of one that has none, of others the
/// certificates that are not encrypted. Throws 16306 for what is not PKCS #12.
Pkcs12Content LookIntoPkcs12(const COpenSslLibrary& library, std::span<const unsigned char> octets);

/// The encoding of a certificate.
std::vector<unsigned char> EncodingOf(const X509* certificate);

}  // namespace ca
