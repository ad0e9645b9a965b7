#pragma once

#include <openssl/bio.h>
#include <openssl/cms.h>
#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/ocsp.h>
#include <openssl/pkcs12.h>
#include <openssl/x509.h>
#include <openssl/x509_vfy.h>

#include <memory>

namespace ca {

/// Calls `free` in the place of delete.
template <auto free>
struct Freeing {
    template <class T>
    void operator()(T* object) const noexcept {
        free(object);
    }
};

template <class T, auto free>
using Owned = std::unique_ptr<T, Freeing<free>>;

inline void FreeCertificates(STACK_OF(X509) * list) noexcept {
    sk_X509_pop_free(list, X509_free);
}
inline void FreeCrls(STACK_OF(X509_CRL) * list) noexcept {
    sk_X509_CRL_pop_free(list, X509_CRL_free);
}
inline void FreeText(char* text) noexcept {
    OPENSSL_free(text);
}
inline void FreeOctets(unsigned char* octets) noexcept {
    OPENSSL_free(octets);
}

// Owners of OpenSSL's objects; null owns nothing.
using X509Ptr = Owned<X509, &X509_free>;
using CrlPtr = Owned<X509_CRL, &X509_CRL_free>;
using KeyPtr = Owned<EVP_PKEY, &EVP_PKEY_free>;
using BioPtr = Owned<BIO, &BIO_free_all>;
using CmsPtr = Owned<CMS_ContentInfo, &CMS_ContentInfo_free>;
using DigestPtr = Owned<EVP_MD, &EVP_MD_free>;
using DigestContextPtr = Owned<EVP_MD_CTX, &EVP_MD_CTX_free>;
using KeyContextPtr = Owned<EVP_PKEY_CTX, &EVP_PKEY_CTX_free>;
using Pkcs12Ptr = Owned<PKCS12, &PKCS12_free>;
using EncryptedKeyPtr = Owned<X509_SIG, &X509_SIG_free>;
using PlainKeyPtr = Owned<PKCS8_PRIV_KEY_INFO, &PKCS8_PRIV_KEY_INFO_free>;
using TrustPtr = Owned<X509_STORE, &X509_STORE_free>;
using ChainContextPtr = Owned<X509_STORE_CTX, &X509_STORE_CTX_free>;
using CertificatesPtr = Owned<STACK_OF(X509), &FreeCertificates>;
using CrlsPtr = Owned<STACK_OF(X509_CRL), &FreeCrls>;
using OcspAnswerPtr = Owned<OCSP_BASICRESP, &OCSP_BASICRESP_free>;
using OctetsPtr = Owned<unsigned char, &FreeOctets>;

}  // namespace ca
