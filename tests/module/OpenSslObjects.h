#pragma once

// Certificates and messages that OpenSSL makes for tests.

#include <gtest/gtest.h>
#include <openssl/bio.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/sha.h>
#include <openssl/x509v3.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <memory>
#include <string>

template <auto Free>
struct Freer {
    template <class T>
    void operator()(T* object) const {
        Free(object);
    }
};
using BioPtr = std::unique_ptr<BIO, Freer<BIO_free>>;
using X509Ptr = std::unique_ptr<X509, Freer<X509_free>>;
using KeyPtr = std::unique_ptr<EVP_PKEY, Freer<EVP_PKEY_free>>;

template <class Object>
std::string Der(Object* object, int (*write)(const Object*, unsigned char**)) {
    unsigned char* der = nullptr;
    const int size = write(object, &der);
    std::string octets(reinterpret_cast<char*>(der), static_cast<std::size_t>(std::max(size, 0)));
    OPENSSL_free(der);
    return octets;
}
inline std::string DerOf(X509* certificate) {
    return Der<X509>(certificate, &i2d_X509);
}

inline std::string PemOf(X509* certificate) {
    const BioPtr memory(BIO_new(BIO_s_mem()));
    PEM_write_bio_X509(memory.get(), certificate);
    char* text = nullptr;
    const long size = BIO_get_mem_data(memory.get(), &text);
    return {text, static_cast<std::size_t>(size)};
}

/// A certificate for `name`, issued by the holder of `issuerKey`.
inline X509Ptr Issue(const std::string& name, const std::string& issuer, EVP_PKEY* key,
                     EVP_PKEY* issuerKey) {
    X509Ptr made(X509_new());
    X509_set_version(made.get(), 2);
    ASN1_INTEGER_set(X509_get_serialNumber(made.get()), 7);
    X509_gmtime_adj(X509_getm_notBefore(made.get()), 0);
    X509_gmtime_adj(X509_getm_notAfter(made.get()), 100000);
    X509_set_pubkey(made.get(), key);
    const auto add = [](X509_NAME* to, const std::string& value) {
        X509_NAME_add_entry_by_NID(to, NID_commonName, MBSTRING_UTF8,
                                   reinterpret_cast<const unsigned char*>(value.data()),
                                   static_cast<int>(value.size()), -1, 0);
    };
    add(X509_get_subject_name(made.get()), name);
    add(X509_get_issuer_name(made.get()), issuer);
    X509_sign(made.get(), issuerKey, EVP_sha256());
    return made;
}

/// ASCII letters in lower case.
inline std::string Lower(std::string text) {
    std::ranges::transform(text, text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return text;
}

/// The dotted text of an identifier.
inline std::string DottedOf(const ASN1_OBJECT* object) {
    std::array<char, 128> text{};
    OBJ_obj2txt(text.data(), static_cast<int>(text.size()), object, /*no_name=*/1);
    return text.data();
}

/// A time in the form of records, in UTC.
inline std::string TimeOf(const ASN1_TIME* time) {
    std::tm fields{};
    EXPECT_EQ(1, ASN1_TIME_to_tm(time, &fields));
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%d.%m.%Y %H:%M:%S", &fields);
    return text.data();
}

/// SHA-1 as lower-case hexadecimal digits.
inline std::string IdOf(const std::string& der) {
    std::array<unsigned char, SHA_DIGEST_LENGTH> digest{};
    SHA1(reinterpret_cast<const unsigned char*>(der.data()), der.size(), digest.data());
    char* const text = OPENSSL_buf2hexstr(digest.data(), SHA_DIGEST_LENGTH);
    std::string hex = Lower(text);
    OPENSSL_free(text);
    std::erase(hex, ':');
    return hex;
}

inline std::string Base64(const std::string& octets) {
    std::string text(octets.size() * 4 / 3 + 4, '\0');
    text.resize(static_cast<std::size_t>(EVP_EncodeBlock(
        reinterpret_cast<unsigned char*>(text.data()),
        reinterpret_cast<const unsigned char*>(octets.data()), static_cast<int>(octets.size()))));
    return text;
}
