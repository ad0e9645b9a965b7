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

/// Signs the attributes with a key that takes whole messages (RFC 8419 3), which OpenSSL 3.0 does
/// not do for messages by itself. Throws 16197.
void SignAttributes(CMS_SignerInfo* signer, EVP_PKEY* key);
/// Whether the signer's value is that of such a key over octets: EncodedAttributes(), or the content
/// where there are none (RFC 8419, 3.1, 3.2).
bool VerifyWhole(CMS_SignerInfo* signer, EVP_PKEY* key, std::span<const unsigned char> octets);

}  // namespace ca
