#include "providers/openssl/PrivateKeys.h"

#include "common/ErrorCodes.h"
#include "common/Exception.h"
#include "common/sha1.h"
#include "providers/openssl/GostEngine.h"
#include "providers/openssl/ProviderWords.h"
#include "records/fill/CertInfoFill.h"

#include <string_view>

namespace {

constexpr int kKeyIterations = 100000;  // of PBKDF2, for keys that are written here

using CipherPtr = ca::Owned<EVP_CIPHER, &EVP_CIPHER_free>;

// What was read of octets of DER; throws why there is no key.
ca::KeyPtr RequireKey(ca::KeyPtr key, std::span<const unsigned char> octets) {
    if (key == nullptr && ca::CGostEngine::IsNamedIn(octets) && !ca::CGostEngine::Load()) {
        throw ca::Exception(ca::kErrModeNotSupported, ca::Say(ca::Words::kGostMissing));
    }
    if (key == nullptr) {
        ca::ThrowOpenSsl(ca::kErrBadData);
    }
    return key;
}

ca::KeyPtr ToKey(const ca::COpenSslLibrary& library, const PKCS8_PRIV_KEY_INFO* info) {
    const ASN1_OBJECT* algorithm = nullptr;
    PKCS8_pkey_get0(&algorithm, nullptr, nullptr, nullptr, info);
    const std::span<const unsigned char> oid(OBJ_get0_data(algorithm), OBJ_length(algorithm));
    library.PrepareFor(oid);
    return RequireKey(ca::KeyPtr(EVP_PKCS82PKEY_ex(info, library.Context(), nullptr)), oid);
}

int Length(const std::string& text) {
    return static_cast<int>(text.size());
}

using SafesPtr =
    ca::Owned<STACK_OF(PKCS7), [](STACK_OF(PKCS7) * list) { sk_PKCS7_pop_free(list, PKCS7_free); }>;
using BagsPtr = ca::Owned<STACK_OF(PKCS12_SAFEBAG), [](STACK_OF(PKCS12_SAFEBAG) * list) {
    sk_PKCS12_SAFEBAG_pop_free(list, PKCS12_SAFEBAG_free);
}>;

// PKCS12_parse() decrypts with the host's algorithms, so the safes are opened one by one.
// \param secret  null: nobody knows the password. Null is given back for what that hides.
STACK_OF(PKCS12_SAFEBAG) *
    OpenSafe(const ca::COpenSslLibrary& library, PKCS7* safe, const std::string* secret) {
    if (PKCS7_type_is_data(safe)) {
        return ca::Require(PKCS12_unpack_p7data(safe), ca::kErrBadData);
    }
    if (!PKCS7_type_is_encrypted(safe) || secret == nullptr) {
        return nullptr;  // RFC 7292, 4.1: the others are for a recipient's key, not for a password
    }
    const PKCS7_ENC_CONTENT* const content = safe->d.encrypted->enc_data;
    void* const bags = PKCS12_item_decrypt_d2i_ex(
        content->algorithm, ASN1_ITEM_rptr(PKCS12_SAFEBAGS), secret->c_str(), Length(*secret),
        content->enc_data, /*zbuf=*/1, library.Context(), nullptr);
    if (bags == nullptr) {
        ca::ThrowOpenSsl(ca::kErrParameters);
    }
    return static_cast<STACK_OF(PKCS12_SAFEBAG)*>(bags);
}

// The first key is the file's; bags inside of bags and other things than keys and certificates are
// passed over.
void TakeBag(const ca::COpenSslLibrary& library, PKCS12_SAFEBAG* bag, const std::string* secret,
             ca::Pkcs12Content& content) {
    const int kind = PKCS12_SAFEBAG_get_nid(bag);
    content.hasKey = content.hasKey || kind == NID_keyBag || kind == NID_pkcs8ShroudedKeyBag;
    if (kind == NID_keyBag && content.key == nullptr) {
        content.key = ToKey(library, PKCS12_SAFEBAG_get0_p8inf(bag));
    } else if (kind == NID_pkcs8ShroudedKeyBag && content.key == nullptr && secret != nullptr) {
        const ca::PlainKeyPtr plain(
            ca::Require(PKCS12_decrypt_skey_ex(bag, secret->c_str(), Length(*secret),
                                               library.Context(), nullptr),
                        ca::kErrParameters));
        content.key = ToKey(library, plain.get());
    } else if (kind == NID_certBag && PKCS12_SAFEBAG_get_bag_nid(bag) == NID_x509Certificate) {
        const ca::X509Ptr certificate(
            ca::Require(PKCS12_SAFEBAG_get1_cert(bag), ca::kErrCertificate));
        content.certificates.push_back(library.ReadCertificate(ca::EncodingOf(certificate.get())));
    }
}

ca::Pkcs12Ptr ParsePkcs12(const ca::COpenSslLibrary& library,
                          std::span<const unsigned char> octets) {
    PKCS12* fresh =
        ca::Require(PKCS12_init_ex(NID_pkcs7_data, library.Context(), nullptr), ca::kErrExecution);
    // Not d2i_PKCS12(), which drops the library context of what it reads.
    ca::Pkcs12Ptr file(d2i_PKCS12_bio(ca::ReadingBio(octets).get(), &fresh));
    if (file == nullptr) {
        ca::ThrowOpenSsl(ca::kErrBadData);
    }
    return file;
}

// One without a password is common enough to be tried first: nobody is asked for it.
bool IsWithoutPassword(PKCS12* file) {
    return PKCS12_verify_mac(file, "", 0) == 1;
}

ca::Pkcs12Content TakeSafes(const ca::COpenSslLibrary& library, PKCS12* file,
                            const std::string* secret) {
    const SafesPtr safes(ca::Require(PKCS12_unpack_authsafes(file), ca::kErrBadData));
    ca::Pkcs12Content content;
    for (int i = 0; i < sk_PKCS7_num(safes.get()); ++i) {
        PKCS7* const safe = sk_PKCS7_value(safes.get(), i);
        const BagsPtr bags(OpenSafe(library, safe, secret));
        content.isClosed = content.isClosed || (bags == nullptr && PKCS7_type_is_encrypted(safe));
        for (int k = 0; k < sk_PKCS12_SAFEBAG_num(bags.get()); ++k) {
            TakeBag(library, sk_PKCS12_SAFEBAG_value(bags.get(), k), secret, content);
        }
    }
    return content;
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
        library.PrepareFor(octets);
        return RequireKey(
            KeyPtr(d2i_AutoPrivateKey_ex(nullptr, &at, size, library.Context(), nullptr)), octets);
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

bool IsPkcs12(const PayloadItem& item) {
    const ObjectKind* const kind = RecogniseObject(SourceOf(item));
    return kind != nullptr && kind->name == std::string_view("pkcs12");
}

Pkcs12Content ReadPkcs12(const COpenSslLibrary& library, std::span<const unsigned char> octets,
                         const PasswordSource& password) {
    const Pkcs12Ptr file = ParsePkcs12(library, octets);
    const std::string none;
    if (IsWithoutPassword(file.get())) {
        return TakeSafes(library, file.get(), &none);
    }
    const std::string& secret = password();
    // Where nothing but the key is encrypted, the code alone tells that the rest is as it was.
    if (PKCS12_mac_present(file.get()) == 1 &&
        PKCS12_verify_mac(file.get(), secret.c_str(), Length(secret)) != 1) {
        throw Exception(kErrParameters, Say(Words::kWrongPassword));
    }
    return TakeSafes(library, file.get(), &secret);
}

Pkcs12Content LookIntoPkcs12(const COpenSslLibrary& library,
                             std::span<const unsigned char> octets) {
    const Pkcs12Ptr file = ParsePkcs12(library, octets);
    const std::string none;
    return TakeSafes(library, file.get(), IsWithoutPassword(file.get()) ? &none : nullptr);
}

std::vector<unsigned char> EncodingOf(const X509* certificate) {
    unsigned char* octets = nullptr;
    const int size = Require(i2d_X509(certificate, &octets), kErrCertificate);
    const OctetsPtr owner(octets);
    return {octets, octets + size};
}

}  // namespace ca
