#pragma once

#include <openssl/bio.h>
#include <openssl/evp.h>
#include <openssl/x509.h>

#include <memory>

template <auto Free>
struct Freer {
    template <class T>
    void operator()(T* object) const {
        Free(object);
    }
};
using BioPtr = std::unique_ptr<BIO, Freer<BIO_free>>;
using KeyPtr = std::unique_ptr<EVP_PKEY, Freer<EVP_PKEY_free>>;
using X509Ptr = std::unique_ptr<X509, Freer<X509_free>>;
