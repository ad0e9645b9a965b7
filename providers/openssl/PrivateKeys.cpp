#include "providers/openssl/PrivateKeys.h"

#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "providers/openssl/ProviderWords.h"
#include "records/CertInfoFill.h"

#include <string_view>

namespace {

constexpr int kKeyIterations = 100000;  // of PBKDF2, for keys that are written here

using CipherPtr = ca::Owned<EVP_CIPHER, &EVP_CIPHER_free>;

ca::KeyPtr ToKey(const ca::COpenSslLibrary& library, const PKCS8_PRIV_KEY_INFO* info) {
    ca::KeyPtr key(EVP_PKCS82PKEY_ex(info, library.Context(), nullptr));
    if (key == nullptr) {
        ca::ThrowOpenSsl(ca::kErrBadData);
    }
    return key;
}

int Length(const std::string& text) {
    return static_cast<int>(text.size());
}

}  // namespace

namespace ca {

KeyForm KeyFormOf(const PayloadItem& item) {
    const ObjectKind* const kind = RecogniseObject(SourceOf(item));
    if (kind == nullptr) {
        return KeyForm::kNone;
    }
    const std::string_view name = kind->name;
    return name == "privateKey"            ? KeyForm::kPlain
           : name == "encryptedPrivateKey" ? KeyForm::kEncrypted
                                           : KeyForm::kNone;
}

KeyPtr ReadKey(const COpenSslLibrary& library, std::span<const unsigned char> octets, KeyForm form,
               const PasswordSource& password) {
    const unsigned char* at = octets.data();
    const auto size = static_cast<long>(octets.size());
    if (form == KeyForm::kPlain) {
        KeyPtr key(d2i_AutoPrivateKey_ex(nullptr, &at, size, library.Context(), nullptr));
        if (key == nullptr) {
            ThrowOpenSsl(kErrBadData);
        }
        return key;
    }
    const EncryptedKeyPtr encrypted(d2i_X509_SIG(nullptr, &at, size));
    if (encrypted == nullptr) {
        ThrowOpenSsl(kErrBadData);
    }
    const std::string& secret = password();
    const PlainKeyPtr plain(PKCS8_decrypt_ex(encrypted.get(), secret.c_str(), Length(secret),
                                             library.Context(), nullptr));
    if (plain == nullptr) {
        throw Exception(kErrParameters, Say(Words::kWrongPassword));
    }
    return ToKey(library, plain.get());
}

std::string WriteKey(const COpenSslLibrary& library, const EVP_PKEY* key,
                     const std::string& password) {
    const PlainKeyPtr plain(Require(EVP_PKEY2PKCS8(key), kErrExecution));
    unsigned char* octets = nullptr;
    int size = 0;
    if (password.empty()) {
        size = Require(i2d_PKCS8_PRIV_KEY_INFO(plain.get(), &octets), kErrExecution);
    } else {
        const CipherPtr cipher(
            Require(EVP_CIPHER_fetch(library.Context(), "AES-256-CBC", nullptr), kErrExecution));
        const EncryptedKeyPtr encrypted(
            Require(PKCS8_encrypt_ex(-1, cipher.get(), password.c_str(), Length(password), nullptr,
                                     0, kKeyIterations, plain.get(), library.Context(), nullptr),
                    kErrExecution));
        size = Require(i2d_X509_SIG(encrypted.get(), &octets), kErrExecution);
    }
    const OctetsPtr owner(octets);
    std::string written(reinterpret_cast<const char*>(octets), static_cast<std::size_t>(size));
    OPENSSL_cleanse(octets, static_cast<std::size_t>(size));
    return written;
}

std::wstring PublicKeyDigest(const EVP_PKEY* key) {
    unsigned char* octets = nullptr;
    const int size = i2d_PUBKEY(key, &octets);
    const OctetsPtr owner(octets);
    return size > 0 ? Sha1Hex({octets, static_cast<std::size_t>(size)}) : std::wstring();
}

Pkcs12Content ReadPkcs12(const COpenSslLibrary& library, std::span<const unsigned char> octets,
                         const PasswordSource& password) {
    PKCS12* fresh =
        Require(PKCS12_init_ex(NID_pkcs7_data, library.Context(), nullptr), kErrExecution);
    const unsigned char* at = octets.data();
    const Pkcs12Ptr file(d2i_PKCS12(&fresh, &at, static_cast<long>(octets.size())));
    if (file == nullptr) {
        ThrowOpenSsl(kErrBadData);
    }
    // One without a password is common enough to be tried first: nobody is asked for it.
    static constexpr const char* kNoPassword = "";
    const bool isOpen = PKCS12_verify_mac(file.get(), kNoPassword, 0) == 1;
    const std::string none;
    const std::string& secret = isOpen ? none : password();
    EVP_PKEY* key = nullptr;
    X509* own = nullptr;
    STACK_OF(X509)* others = nullptr;
    if (PKCS12_parse(file.get(), secret.c_str(), &key, &own, &others) != 1) {
        ThrowOpenSsl(kErrParameters);
    }
    Pkcs12Content content{KeyPtr(key), {}};
    X509Ptr first(own);
    const CertificatesPtr rest(others);
    if (first != nullptr) {
        content.certificates.push_back(std::move(first));
    }
    for (int i = 0; i < sk_X509_num(rest.get()); ++i) {
        X509* const each = sk_X509_value(rest.get(), i);
        X509_up_ref(each);
        content.certificates.emplace_back(each);
    }
    return content;
}

std::vector<unsigned char> EncodingOf(const X509* certificate) {
    unsigned char* octets = nullptr;
    const int size = Require(i2d_X509(certificate, &octets), kErrCertificate);
    const OctetsPtr owner(octets);
    return {octets, octets + size};
}

}  // namespace ca
