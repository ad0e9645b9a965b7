#pragma once

#include "providers/openssl/Owners.h"

#include <span>
#include <vector>

namespace ca {

/// The signed attributes of a signer as they are signed: DER of a SET OF (RFC 5652, 5.4). Empty for
/// a signer without any.
std::vector<unsigned char> EncodedAttributes(const CMS_SignerInfo* signer);

/// Adds what each signature signs beside the time: content type and digest of the content (RFC 5652
/// 11.1, 11.2). Throws 16197.
void AddContentAttributes(CMS_SignerInfo* signer, const ASN1_OBJECT* contentType,
                          std::span<const unsigned char> digest);

/// Signs the attributes as they are, with the time, where OpenSSL 3.0 does not do it by itself: with
/// a key that takes whole messages (RFC 8419, 3), and for signatures on signatures, whose attributes
/// name no content type (RFC 5652, 11.4). Throws 16197.
/// \param digest  null for such a key. \param isPss  RSASSA-PSS with an RSA key.
void SignAttributes(CMS_SignerInfo* signer, EVP_PKEY* key, const EVP_MD* digest = nullptr,
                    bool isPss = false);
/// Adds the digest alone (RFC 5652, 11.2). Throws 16197.
void AddDigestAttribute(CMS_SignerInfo* signer, std::span<const unsigned char> digest);
/// Whether the signer's value is that of such a key over octets: EncodedAttributes(), or the content
/// where there are none (RFC 8419, 3.1, 3.2).
bool VerifyWhole(CMS_SignerInfo* signer, EVP_PKEY* key, std::span<const unsigned char> octets);

}  // namespace ca
