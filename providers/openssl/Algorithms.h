#pragma once

#include "common/PKIConfigFileParser.h"
#include "providers/openssl/OpenSslLibrary.h"

#include <string>

namespace ca {

/// The digest that a request names ("SHA-256", "sha384" or an identifier); where it names none, the
/// one that goes with the key: SHA-512 for Ed25519 (RFC 8419, 3.1), for elliptic curves the one of
/// their size, else SHA-256.
/// \param key  null: SHA-256 where none is named.
/// Throws 16303 for one that OpenSSL does not have, 16268 for one that `algorithms.digests` does not
/// allow.
DigestPtr ChooseDigest(const COpenSslLibrary& library, const PkiAlgorithms& allowed,
                       const std::wstring& name, const EVP_PKEY* key);

/// Keys whose algorithm takes the message itself, not its digest (RFC 8032).
bool SignsWholeMessage(const EVP_PKEY* key);

/// Whether the configuration allows the digest, the signature algorithm (dotted identifiers), and a
/// key of this length.
bool IsDigestAllowed(const PkiAlgorithms& allowed, const std::wstring& oid);
bool IsSignatureAllowed(const PkiAlgorithms& allowed, const std::wstring& oid);
bool IsKeyAllowed(const PkiAlgorithms& allowed, const EVP_PKEY* key);

/// The dotted identifier of the signature algorithm that a key and a digest make together.
/// \param isPss  RSASSA-PSS with an RSA key.
std::wstring SignatureOf(const EVP_PKEY* key, int digest, bool isPss);

/// Throws 16268 when the configuration does not allow it.
void RequireSignature(const PkiAlgorithms& allowed, const EVP_PKEY* key, const EVP_MD* digest,
                      bool isPss);

/// The dotted text of an identifier.
std::wstring Dotted(const ASN1_OBJECT* oid);

}  // namespace ca
