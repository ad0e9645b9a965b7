#pragma once

#include "providers/openssl/Owners.h"

#include <string>
#include <vector>

namespace ca {

// What a signer says of its signature, against what it is.

/// The content type that is signed is that of the content (RFC 5652, 11.1).
bool IsTypeRight(const CMS_SignerInfo* signer, const ASN1_OBJECT* contentType);

/// What is verified, dotted, whatever the signer calls it: OpenSSL goes by the key and by the digest
/// beside.
std::wstring SignatureOid(const X509_ALGOR* digest, const X509_ALGOR* signature,
                          const EVP_PKEY* key);

/// The algorithm that the signer names is one of the key's.
bool FitsKey(const X509_ALGOR* signature, const EVP_PKEY* key);

/// The certificate is the one that was meant (RFC 5035, 5.4), where the signature says which.
/// \param others  certificates of the message; its issuers may be among these and in `chain`.
bool IsCertificateMeant(const CMS_SignerInfo* signer, X509* certificate,
                        const STACK_OF(X509) * others, const std::vector<X509Ptr>& chain);

/// Why OpenSSL makes nothing of a certificate's public key; static.
const wchar_t* WhyNoKey(const X509* certificate);

}  // namespace ca
